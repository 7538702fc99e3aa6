#include "phone/springboard/roads.h"

#include "phone/springboard/applications/applications.h"
#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/workspace/transitions.h"
#include "phone/system/journal.h"
#include "phone/system/text.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <optional>

namespace phone {

using namespace platform;

namespace {

id workspace()
{
    return send<"sharedInstance">(id(classNamed<"SBMainWorkspace">()));
}

id iconViewFor(const std::string& identifier)
{
    const id model = send<"model">(send<"sharedInstance">(id(classNamed<"SBIconController">())));
    id view = send<"new">(id(classNamed<"SBIconView">()));
    send<"setIcon:", void>(view, send<"applicationIconForBundleIdentifier:">(model, string(identifier)));
    return view;
}

/// Of the icon that is drawn; empty where none is, or something else lies over it.
std::optional<CGPoint> placeForFinger(const std::string& identifier)
{
    const id view = iconViewOf(identifier);
    const id picture = askObject<"_iconImageView">(view);
    if (!picture)
        return std::nullopt;
    const CGRect frame = send<"convertRect:toView:", CGRect>(picture, send<"bounds", CGRect>(picture), nil);
    const CGPoint middle { frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2 };
    const id touched = viewOnScreenAt(middle);
    return touched && send<"isDescendantOfView:", bool>(touched, view) ? std::optional(middle) : std::nullopt;
}

/// By a finger where one reaches the icon; what stands on another page, in a folder or behind an application is tapped
/// without one.
void tap(const std::vector<std::string>& identifiers)
{
    const auto place = placeForFinger(identifiers.front());
    if (!place) {
        send<"tapGestureDidChange:", void>(iconViewFor(identifiers.front()), nil);
        return;
    }
    touchScreenAt(*place, TouchKind::Began);
    touchScreenAt(*place, TouchKind::Ended);
}

void selectQuickAction(const std::vector<std::string>& identifiers)
{
    const id item = send<"new">(id(classNamed<"SBSApplicationShortcutItem">()));
    send<"setBundleIdentifierToLaunch:", void>(item, string(identifiers.front()));
    const id controller = send<"sharedInstance">(id(classNamed<"SBIconController">()));
    send<"iconView:didSelectApplicationShortcutItem:", void>(controller, iconViewFor(identifiers.front()), item);
}

id transitionRequestFor(const std::string& identifier)
{
    return makeTransitionRequest({ .applications = { applicationNamed(identifier) }, .label = "ActivateApplication" });
}

void executeVoluntarily(const std::vector<std::string>& identifiers)
{
    send<"_executeTransitionRequest:options:validator:voluntarily:", bool>(
        workspace(), transitionRequestFor(identifiers.front()), nil, nil, true);
}

void executeValidated(const std::vector<std::string>& identifiers)
{
    send<"_executeTransitionRequest:options:validator:", bool>(
        workspace(), transitionRequestFor(identifiers.front()), nil, nil);
}

void openThroughService(const std::vector<std::string>& identifiers)
{
    const id service = send<"sharedInstance">(id(classNamed<"FBSOpenApplicationService">()));
    send<"openApplication:withOptions:completion:", void>(service, string(identifiers.front()), nil, nil);
}

void openThroughServiceWithPort(const std::vector<std::string>& identifiers)
{
    const id service = send<"sharedInstance">(id(classNamed<"FBSOpenApplicationService">()));
    send<"openApplication:withOptions:clientPort:completion:", void>(
        service, string(identifiers.front()), nil, 0U, nil);
}

id cardOf(const std::vector<std::string>& identifiers)
{
    std::vector<id> strings;
    for (const std::string& identifier : identifiers)
        strings.push_back(string(identifier));
    const id layout = send<"new">(id(classNamed<"SBAppLayout">()));
    send<"setBundleIdentifiers:", void>(layout, array(std::move(strings)));
    id container = send<"new">(id(classNamed<"SBFluidSwitcherItemContainer">()));
    send<"setAppLayout:", void>(container, layout);
    return container;
}

id switcher()
{
    return send<"new">(id(classNamed<"SBFluidSwitcherViewController">()));
}

void selectCard(const std::vector<std::string>& identifiers)
{
    send<"didSelectContainer:", void>(switcher(), cardOf(identifiers));
}

void selectCardWithModifiers(const std::vector<std::string>& identifiers)
{
    send<"didSelectContainer:modifierFlags:", void>(switcher(), cardOf(identifiers), NSInteger { 0 });
}

constexpr Road roads[] {
    { "tap", "SBIconView _handleTap", "a tap on the icon", tap, false, true },
    { "quick-action", "SBIconController iconView:didSelectApplicationShortcutItem:",
        "an entry of the icon's quick-action menu", selectQuickAction },
    { "switcher", "SBFluidSwitcherViewController didSelectContainer:", "a card of the switcher", selectCard, true },
    { "switcher-modifiers", "SBFluidSwitcherViewController didSelectContainer:modifierFlags:",
        "a card of the switcher, selected with a keyboard at hand", selectCardWithModifiers, true },
    { "service", "FBSOpenApplicationService openApplication:withOptions:completion:", "the open service in SpringBoard",
        openThroughService },
    { "service-port", "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:",
        "the open service with a client's port", openThroughServiceWithPort },
    { "workspace-execute", "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:",
        "a transition that the workspace is asked to execute", executeVoluntarily },
    { "workspace-validate", "SBMainWorkspace _executeTransitionRequest:options:validator:",
        "a transition that only its validation can stop", executeValidated },
};

bool existsHere(const Road& road)
{
    const std::size_t space = road.method.find(' ');
    return class_respondsToSelector(
        objc_getClass(road.method.substr(0, space)), sel_registerName(road.method.substr(space + 1)));
}

} // namespace

std::span<const Road> springBoardRoads() noexcept
{
    return roads;
}

RoadOutcome enterRoad(std::string_view name, const std::vector<std::string>& identifiers)
{
    const auto road = std::ranges::find(roads, name, &Road::name);
    if (road == std::end(roads))
        return RoadOutcome::UnknownRoad;
    if (!existsHere(*road))
        return RoadOutcome::MissingOnThisVersion;
    if (identifiers.empty() || !std::ranges::all_of(identifiers, [&](const std::string& identifier) {
            return static_cast<bool>(
                road->takesServices ? applicationOrServiceNamed(identifier) : applicationNamed(identifier));
        }))
        return RoadOutcome::UnknownApplication;
    if (!road->isNotedOnItsWay)
        journal(JournalEvent::Sent, road->method);
    road->enter(identifiers);
    return RoadOutcome::Entered;
}

void pressHome()
{
    send<"goHome", void>(workspace());
}

std::string frontmostApplication()
{
    return textOf(askObject<"bundleIdentifier">(send<"frontmostApplication">(workspace())));
}

} // namespace phone
