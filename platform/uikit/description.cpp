#include "platform/uikit/animation.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/renderer.h"
#include "platform/uikit/window.h"

#include <array>
#include <charconv>

namespace platform {

namespace {

/// At most two places behind the point, and none that say nothing.
std::string numberText(double value)
{
    constexpr double places = 100;
    const double rounded = std::round(value * places) / places;
    std::array<char, 400> text {};
    // Adding 0 makes a negative zero positive.
    const auto [end, error]
        = std::to_chars(text.data(), text.data() + text.size(), rounded + 0.0, std::chars_format::fixed);
    return error == std::errc() ? std::string(text.data(), end) : "?";
}

std::string rectText(const CGRect& rect)
{
    return "(" + numberText(rect.origin.x) + ", " + numberText(rect.origin.y) + ", " + numberText(rect.size.width)
        + " x " + numberText(rect.size.height) + ")";
}

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text) {
        if (c == '\n') {
            result += "\\n";
            continue;
        }
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

} // namespace

std::string describeView(const ViewObject& view, int depth)
{
    const Presentation seen = presentationOf(view);
    std::string text(static_cast<std::size_t>(depth) * 2, ' ');
    text.append(class_getName(view.isa())).append(" ").append(rectText(seen.frame()));
    if (const auto shown = view.shownText())
        text += " " + quoted(*shown);
    if (const auto* const window = dynamic_cast<const WindowObject*>(&view); window && window->windowLevel != 0)
        text += " level " + numberText(window->windowLevel);
    if (seen.alpha != 1)
        text += " alpha " + numberText(seen.alpha);
    if (view.hidden)
        text += " hidden";
    text += '\n';
    for (const Ref<ViewObject>& subview : view.subviews)
        text += describeView(*subview, depth + 1);
    return text;
}

std::string describeScreen()
{
    layoutAllWindows();
    std::string text;
    for (const Ref<WindowObject>& window : allWindows())
        text += describeView(*window);
    return text;
}

} // namespace platform
