#include "launch/launch_decision.h"

#include "core/policies.h"

namespace appledger {

namespace {

using enum LaunchRoad;
using enum BlockedListSource;

constexpr LaunchRoadTraits roads[] {
    { HomeScreenTap, "SBIconView", "_handleTap", Cache, true, false },
    { WorkspaceExecute, "SBMainWorkspace", "_executeTransitionRequest:options:validator:voluntarily:", Cache, true,
        false },
    { WorkspaceValidate, "SBMainWorkspace", "_canExecuteTransitionRequest:forExecution:", FreshSynchronized, false,
        true },
    { QuickAction, "SBIconController", "iconView:didSelectApplicationShortcutItem:", Fresh, false, false },
    { OpenServiceWithPort, "FBSOpenApplicationService", "openApplication:withOptions:clientPort:completion:", Fresh,
        false, false },
    { OpenService, "FBSOpenApplicationService", "openApplication:withOptions:completion:", Fresh, false, false },
    { Switcher, "SBFluidSwitcherViewController", "didSelectContainer:", Cache, true, false },
    { SwitcherWithModifiers, "SBFluidSwitcherViewController", "didSelectContainer:modifierFlags:", Cache, true, false },
    { SpotlightOpenServiceWithPort, "FBSOpenApplicationService",
        "openApplication:withOptions:clientPort:completion:", Cache, false, false },
    { SpotlightOpenService, "FBSOpenApplicationService", "openApplication:withOptions:completion:", Cache, false,
        false },
    { SpotlightWorkspace, "LSApplicationWorkspace", "openApplicationWithBundleID:", Cache, false, false },
};

} // namespace

const LaunchRoadTraits& traits(LaunchRoad road) noexcept
{
    return roads[static_cast<std::size_t>(road)];
}

std::span<const LaunchRoadTraits> launchRoads() noexcept
{
    return roads;
}

std::string_view LaunchVerdict::reason() const noexcept
{
    switch (outcome) {
    case LaunchOutcome::Prompt:
        return "Blocked for Authentication";
    case LaunchOutcome::Stop:
        return "Blocked by AppLedger";
    case LaunchOutcome::Open:
        break;
    }
    return "";
}

LaunchVerdict decideLaunch(std::string_view identifier, const LaunchLists& lists)
{
    if (lists.requireAuth.contains(identifier) && identifier != lists.bypass)
        return { LaunchOutcome::Prompt, identifier, policy::requireAuth.key };
    if (lists.blocked.contains(identifier))
        return { LaunchOutcome::Stop, identifier, policy::blockedLaunch.key };
    if (lists.hidden.contains(identifier))
        return { LaunchOutcome::Stop, identifier, policy::hidden.key };
    return {};
}

LaunchVerdict decideSwitcherLaunch(const std::function<bool(std::string_view)>& holds, const LaunchLists& lists)
{
    for (const std::string_view identifier : lists.requireAuth)
        if (holds(identifier) && identifier != lists.bypass)
            return { LaunchOutcome::Prompt, identifier, policy::requireAuth.key };
    for (const std::string_view identifier : lists.blocked)
        if (holds(identifier))
            return { LaunchOutcome::Stop, identifier, policy::blockedLaunch.key };
    for (const std::string_view identifier : lists.hidden)
        if (holds(identifier))
            return { LaunchOutcome::Stop, identifier, policy::hidden.key };
    return {};
}

} // namespace appledger
