#include "platform/uikit/elements.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/window.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

struct Role {
    std::string_view className;
    std::string_view name;
};

/// The first that the view is of, subclasses before their superclasses.
constexpr Role roles[] {
    { "UIWindow", "window" },
    { "UIButton", "button" },
    { "UISwitch", "switch" },
    { "UISearchBar", "search field" },
    { "UITextField", "text field" },
    { "UITableViewCell", "cell" },
    { "UITableView", "table" },
    { "UIScrollView", "scroll view" },
    { "UIControl", "control" },
    { "UILabel", "text" },
    { "UIImageView", "image" },
};

/// What isn't of such a class is a button when it can be tapped.
std::string_view roleOf(const ViewObject& view, const id& object)
{
    for (const Role& role : roles)
        if (const Class cls = objc_getClass(role.className); cls && isKindOfClass(object, cls))
            return role.name;
    if (const auto recognizers = asArray(view.gestureRecognizers))
        for (const id& recognizer : *recognizers)
            if (isKindOfClass(recognizer, classNamed<"UITapGestureRecognizer">()))
                return "button";
    return "";
}

CGRect frameOnScreen(const ViewObject& view, const WindowObject& window)
{
    const CGRect bounds = view.bounds;
    const double right = bounds.origin.x + bounds.size.width;
    const double bottom = bounds.origin.y + bounds.size.height;
    std::array corners { view.pointInRoot(bounds.origin), view.pointInRoot({ right, bounds.origin.y }),
        view.pointInRoot({ bounds.origin.x, bottom }), view.pointInRoot({ right, bottom }) };
    const auto [left, farthest] = std::ranges::minmax(corners, {}, &CGPoint::x);
    const auto [top, lowest] = std::ranges::minmax(corners, {}, &CGPoint::y);
    const CGPoint origin = window.frame().origin;
    return CGRectMake(left.x + origin.x, top.y + origin.y, farthest.x - left.x, lowest.y - top.y);
}

id elementOf(ViewObject& view, const WindowObject& window, bool isInSight)
{
    const id object(&view);
    const bool isVisible = isInSight && !view.hidden && view.alpha > 0.01;
    const CGRect frame = frameOnScreen(view, window);
    std::vector<std::pair<id, id>> pairs {
        { string("class"), string(class_getName(view.isa())) },
        { string("frame"),
            array({ real(frame.origin.x), real(frame.origin.y), real(frame.size.width), real(frame.size.height) }) },
        { string("visible"), boolean(isVisible) },
        { string("enabled"), boolean(ask<"isEnabled", bool>(object).value_or(true)) },
    };
    const auto add = [&pairs](std::string_view key, const id& value) {
        if (asString(value))
            pairs.emplace_back(string(key), value);
    };
    if (const std::string_view role = roleOf(view, object); !role.empty())
        add("role", string(role));
    add("identifier", send<"accessibilityIdentifier">(object));
    const id label = send<"accessibilityLabel">(object);
    const auto text = view.shownText();
    add("label", !label && text ? string(*text) : label);
    add("value", askObject<"accessibilityValue">(object));
    add("picture", askObject<"accessibilityIdentifier">(askObject<"image">(object)));
    std::vector<id> children;
    for (const Ref<ViewObject>& subview : view.subviews)
        children.push_back(elementOf(*subview, window, isVisible));
    if (!children.empty())
        pairs.emplace_back(string("children"), array(std::move(children)));
    return dictionary(std::move(pairs));
}

} // namespace

id elementsOfWindows()
{
    layoutAllWindows();
    std::vector<id> elements;
    for (const Ref<WindowObject>& window : allWindows())
        elements.push_back(elementOf(*window, *window, true));
    return array(std::move(elements));
}

id viewOfWindowsAt(CGPoint point)
{
    layoutAllWindows();
    const auto windows = allWindows();
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        const CGPoint origin = (*window)->frame().origin;
        const CGPoint inWindow { point.x - origin.x, point.y - origin.y };
        if (id view = send<"hitTest:withEvent:">(*window, inWindow, nil))
            return view;
    }
    return nil;
}

} // namespace platform
