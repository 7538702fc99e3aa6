#include "launch/block_launch_hooks.h"

#include "launch/launch_gate.h"
#include "launch/open_service_hooks.h"
#include "launch/transition_request.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

std::optional<StringValue> bundleIdentifierOfIcon(const id& icon)
{
    if (const auto identifier = ask<"applicationBundleID">(icon))
        return asString(*identifier);
    return asString(ask<"applicationBundleIdentifier">(icon));
}

bool isTransitionRequest(const id& request)
{
    return isKindOfClass(request, classNamed<"SBMainWorkspaceTransitionRequest">())
        || isKindOfClass(request, classNamed<"SBWorkspaceTransitionRequest">());
}

Original<void()> original_handleTap;

void SBIconView_handleTap(const id& self, SEL cmd)
{
    if (launchIsStopped(bundleIdentifierOfIcon(askObject<"icon">(self)), LaunchRoad::HomeScreenTap))
        return;
    original_handleTap(self, cmd);
}

Original<bool(id, id, id, bool)> original_executeTransitionRequest;

bool SBMainWorkspace_executeTransitionRequest(
    const id& self, SEL cmd, const id& request, const id& options, const id& validator, bool voluntarily)
{
    const id context = askObject<"applicationContext">(request);
    const id entity = askObject<"applicationSceneEntityForLayoutRole:">(context, number(1));
    if (launchIsStopped(bundleIdentifierOfEntity(entity), LaunchRoad::WorkspaceExecute))
        return false;
    return original_executeTransitionRequest(self, cmd, request, options, validator, voluntarily);
}

Original<bool(id, bool)> original_canExecuteTransitionRequest;

bool SBMainWorkspace_canExecuteTransitionRequest(const id& self, SEL cmd, const id& request, bool forExecution)
{
    if (isTransitionRequest(request)) {
        if (launchIsStopped(destinationOfRequest(request), LaunchRoad::WorkspaceValidate, request))
            return false;
    }
    return original_canExecuteTransitionRequest(self, cmd, request, forExecution);
}

Original<void(id, id)> original_didSelectShortcutItem;

void SBIconController_didSelectShortcutItem(const id& self, SEL cmd, const id& iconView, const id& shortcutItem)
{
    const id icon = askObject<"icon">(iconView);
    if (launchIsStopped(asString(ask<"applicationBundleID">(icon)), LaunchRoad::QuickAction))
        return;
    original_didSelectShortcutItem(self, cmd, iconView, shortcutItem);
}

/// Whether the card of a switcher container must not be opened. A container that doesn't tell its layout,
/// and a layout that doesn't tell its applications, pass.
bool containerIsStopped(const id& container, LaunchRoad road)
{
    const id layout = askObject<"appLayout">(container);
    if (!respondsTo<"containsItemWithBundleIdentifier:">(layout))
        return false;
    return switcherLaunchIsStopped(
        [&layout](std::string_view identifier) {
            return send<"containsItemWithBundleIdentifier:", bool>(layout, string(identifier));
        },
        road);
}

Original<void(id)> original_didSelectContainer;

void SBFluidSwitcherViewController_didSelectContainer(const id& self, SEL cmd, const id& container)
{
    if (containerIsStopped(container, LaunchRoad::Switcher))
        return;
    original_didSelectContainer(self, cmd, container);
}

Original<void(id, NSInteger)> original_didSelectContainerWithModifiers;

void SBFluidSwitcherViewController_didSelectContainerWithModifiers(
    const id& self, SEL cmd, const id& container, NSInteger modifierFlags)
{
    if (containerIsStopped(container, LaunchRoad::SwitcherWithModifiers))
        return;
    original_didSelectContainerWithModifiers(self, cmd, container, modifierFlags);
}

constexpr HookRow rows[] {
    replace<&SBIconView_handleTap>("SBIconView", "_handleTap", original_handleTap),
    replace<&SBMainWorkspace_executeTransitionRequest>("SBMainWorkspace",
        "_executeTransitionRequest:options:validator:voluntarily:", original_executeTransitionRequest),
    replace<&SBMainWorkspace_canExecuteTransitionRequest>(
        "SBMainWorkspace", "_canExecuteTransitionRequest:forExecution:", original_canExecuteTransitionRequest),
    replace<&SBIconController_didSelectShortcutItem>(
        "SBIconController", "iconView:didSelectApplicationShortcutItem:", original_didSelectShortcutItem),
    openServiceWithPortRow<LaunchRoad::OpenServiceWithPort>(),
    openServiceRow<LaunchRoad::OpenService>(),
    replace<&SBFluidSwitcherViewController_didSelectContainer>(
        "SBFluidSwitcherViewController", "didSelectContainer:", original_didSelectContainer),
    replace<&SBFluidSwitcherViewController_didSelectContainerWithModifiers>(
        "SBFluidSwitcherViewController", "didSelectContainer:modifierFlags:", original_didSelectContainerWithModifiers),
};

} // namespace

const HookGroup BlockLaunchHooks { "BlockLaunchHooks", rows };

} // namespace appledger
