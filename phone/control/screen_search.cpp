#include "phone/control/screen_search.h"

#include "phone/control/value_json.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <functional>

namespace phone {

using namespace platform;
using Json = nlohmann::json;

namespace {

/// Every view that can be seen, from the back to the front.
void forEachVisible(const Json& elements, const std::function<void(const Json&)>& visit)
{
    for (const Json& element : elements) {
        if (!element.value("visible", false))
            continue;
        visit(element);
        if (element.contains("children"))
            forEachVisible(element["children"], visit);
    }
}

std::string lowercase(std::string text)
{
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return c < 128 ? std::tolower(c) : c; });
    return text;
}

bool contains(const std::string& text, const std::string& part)
{
    return lowercase(text).find(lowercase(part)) != std::string::npos;
}

std::optional<CGPoint> pointIn(std::string_view text)
{
    CGPoint point {};
    const char* const end = text.data() + text.size();
    const auto [comma, firstError] = std::from_chars(text.data(), end, point.x);
    if (firstError != std::errc() || comma == end || *comma != ',')
        return std::nullopt;
    const auto [last, error] = std::from_chars(comma + 1, end, point.y);
    if (error != std::errc() || last != end || !std::isfinite(point.x) || !std::isfinite(point.y))
        return std::nullopt;
    return point;
}

CGRect screenBounds()
{
    return send<"bounds", CGRect>(send<"mainScreen">(id(classNamed<"UIScreen">())));
}

/// Of what is on the screen of it; empty where nothing is.
std::optional<CGPoint> middleOf(const Json& element)
{
    const Json& frame = element["frame"];
    const CGRect screen = screenBounds();
    const double left = std::max(frame[0].get<double>(), 0.0);
    const double top = std::max(frame[1].get<double>(), 0.0);
    const double right = std::min(frame[0].get<double>() + frame[2].get<double>(), screen.size.width);
    const double bottom = std::min(frame[1].get<double>() + frame[3].get<double>(), screen.size.height);
    if (right <= left || bottom <= top)
        return std::nullopt;
    return CGPoint { (left + right) / 2, (top + bottom) / 2 };
}

std::vector<Json> visibleElements()
{
    std::vector<Json> elements;
    forEachVisible(toJson(elementsOfScreen()), [&elements](const Json& element) {
        if (middleOf(element)) {
            elements.push_back(element);
            elements.back().erase("children");
        }
    });
    return elements;
}

using Match = bool (*)(const Json& element, const std::string& name);

constexpr Match matches[] {
    [](const Json& element, const std::string& name) { return element.value("identifier", "") == name; },
    [](const Json& element, const std::string& name) { return element.value("label", "") == name; },
    [](const Json& element, const std::string& name) { return contains(element.value("label", ""), name); },
};

} // namespace

PlaceOnScreen placeOnScreen(const Json& name)
{
    if (!name.is_string() || name.get_ref<const std::string&>().empty())
        return { {}, "nothing is named" };
    const auto& wanted = name.get_ref<const std::string&>();
    if (const auto point = pointIn(wanted)) {
        if (!CGRectContainsPoint(screenBounds(), *point))
            return { {}, wanted + " is off the screen" };
        return { point, {} };
    }
    const std::vector<Json> elements = visibleElements();
    for (const Match& isMatch : matches) {
        std::vector<Json> found;
        std::ranges::copy_if(
            elements, std::back_inserter(found), [&](const Json& element) { return isMatch(element, wanted); });
        if (found.empty())
            continue;
        const std::string label = found.back().value("label", "");
        if (&isMatch == std::end(matches) - 1
            && std::ranges::any_of(found, [&label](const Json& other) { return other.value("label", "") != label; }))
            return { {}, "several views on the screen have " + wanted + " in their labels" };
        return { middleOf(found.back()), {} };
    }
    return { {}, "no view on the screen is called " + wanted };
}

Json elementAt(CGPoint point)
{
    const id view = viewOnScreenAt(point);
    if (!view)
        return nullptr;
    Json element { { "class", class_getName(view->isa()) } };
    for (id named = view; named; named = askObject<"superview">(named)) {
        const auto label = asString(askObject<"accessibilityLabel">(named));
        const auto identifier = asString(askObject<"accessibilityIdentifier">(named));
        if (identifier)
            element["identifier"] = identifier->text();
        if (label)
            element["label"] = label->text();
        if (label || identifier)
            break;
    }
    return element;
}

bool isSeen(const std::string& name)
{
    const std::vector<Json> elements = visibleElements();
    return std::ranges::any_of(elements, [&name](const Json& element) {
        return std::ranges::any_of(matches, [&](const Match& isMatch) { return isMatch(element, name); });
    });
}

} // namespace phone
