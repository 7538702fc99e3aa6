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

struct HandleTap : Hook<HandleTap, "SBIconView", "_handleTap", void()> {
    static void replacement(const id& self, SEL cmd)
    {
        if (launchIsStopped(bundleIdentifierOfIcon(askObject<"icon">(self)), LaunchRoad::HomeScreenTap))
            return;
        original(self, cmd);
    }
};

struct ExecuteTransitionRequest
    : Hook<ExecuteTransitionRequest, "SBMainWorkspace",
          "_executeTransitionRequest:options:validator:voluntarily:", bool(id, id, id, bool)> {
    static bool replacement(
        const id& self, SEL cmd, const id& request, const id& options, const id& validator, bool voluntarily)
    {
        const id context = askObject<"applicationContext">(request);
        const id entity = askObject<"applicationSceneEntityForLayoutRole:">(context, number(1));
        if (launchIsStopped(bundleIdentifierOfEntity(entity), LaunchRoad::WorkspaceExecute))
            return false;
        return original(self, cmd, request, options, validator, voluntarily);
    }
};

struct CanExecuteTransitionRequest : Hook<CanExecuteTransitionRequest, "SBMainWorkspace",
                                         "_canExecuteTransitionRequest:forExecution:", bool(id, bool)> {
    static bool replacement(const id& self, SEL cmd, const id& request, bool forExecution)
    {
        if (isTransitionRequest(request)) {
            if (launchIsStopped(destinationOfRequest(request), LaunchRoad::WorkspaceValidate, request))
                return false;
        }
        return original(self, cmd, request, forExecution);
    }
};

struct DidSelectShortcutItem
    : Hook<DidSelectShortcutItem, "SBIconController", "iconView:didSelectApplicationShortcutItem:", void(id, id)> {
    static void replacement(const id& self, SEL cmd, const id& iconView, const id& shortcutItem)
    {
        const id icon = askObject<"icon">(iconView);
        if (launchIsStopped(asString(ask<"applicationBundleID">(icon)), LaunchRoad::QuickAction))
            return;
        original(self, cmd, iconView, shortcutItem);
    }
};

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

struct DidSelectContainer : Hook<DidSelectContainer, "SBFluidSwitcherViewController", "didSelectContainer:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& container)
    {
        if (containerIsStopped(container, LaunchRoad::Switcher))
            return;
        original(self, cmd, container);
    }
};

struct DidSelectContainerWithModifiers : Hook<DidSelectContainerWithModifiers, "SBFluidSwitcherViewController",
                                             "didSelectContainer:modifierFlags:", void(id, NSInteger)> {
    static void replacement(const id& self, SEL cmd, const id& container, NSInteger modifierFlags)
    {
        if (containerIsStopped(container, LaunchRoad::SwitcherWithModifiers))
            return;
        original(self, cmd, container, modifierFlags);
    }
};

constexpr HookRow rows[] {
    HandleTap::row(),
    ExecuteTransitionRequest::row(),
    CanExecuteTransitionRequest::row(),
    DidSelectShortcutItem::row(),
    OpenServiceWithPort<LaunchRoad::OpenServiceWithPort>::row(),
    OpenService<LaunchRoad::OpenService>::row(),
    DidSelectContainer::row(),
    DidSelectContainerWithModifiers::row(),
};

} // namespace

const HookGroup BlockLaunchHooks { "BlockLaunchHooks", rows };

} // namespace appledger
