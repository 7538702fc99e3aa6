#include "core/hex_color.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string>

namespace appledger {

using namespace platform;

namespace {

/// As the system's scanner reads one: white space and a "0x" may come first, and what isn't a digit ends it. 0 when
/// there is none.
std::uint32_t scanHexadecimal(std::string_view text)
{
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
        text.remove_prefix(1);
    if (text.starts_with("0x") || text.starts_with("0X"))
        text.remove_prefix(2);
    std::uint32_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return value;
}

double part(std::uint32_t value, unsigned byte)
{
    return (value >> (8 * byte) & 0xFFU) / 255.0;
}

/// The parts of a colour, in its own space where that knows red, green and blue, else as a grey. The system tells the
/// components of a CGColor and the model of its space by functions of C, which are messages here.
std::optional<HexColor> partsOf(const id& color)
{
    constexpr NSInteger monochrome = 0;
    HexColor parts;
    if (ask<"getRed:green:blue:alpha:", bool>(color, &parts.red, &parts.green, &parts.blue, &parts.alpha)
            .value_or(false))
        return parts;
    const id drawn = askObject<"CGColor">(color);
    if (ask<"colorSpaceModel", NSInteger>(drawn) != monochrome)
        return std::nullopt;
    const ArrayValue components = itemsOf(askObject<"components">(drawn));
    if (components.size() != 2)
        return std::nullopt;
    const double gray = asDouble(components[0]).value_or(0);
    return HexColor { gray, gray, gray, asDouble(components[1]).value_or(1) };
}

} // namespace

std::optional<HexColor> parseHexColor(std::string_view text)
{
    std::string digits(text);
    std::erase(digits, '#');
    const std::uint32_t value = scanHexadecimal(digits);
    if (digits.size() == 6)
        return HexColor { part(value, 2), part(value, 1), part(value, 0), 1 };
    if (digits.size() == 8)
        return HexColor { part(value, 3), part(value, 2), part(value, 1), part(value, 0) };
    return std::nullopt;
}

id colorFromHex(std::string_view text)
{
    const id colors(classNamed<"UIColor">());
    const auto color = parseHexColor(text);
    if (!color)
        return askObject<"systemPurpleColor">(colors);
    return askObject<"colorWithRed:green:blue:alpha:">(colors, color->red, color->green, color->blue, color->alpha);
}

id hexOfColor(const id& color)
{
    const auto parts = partsOf(color);
    if (!parts)
        return string(defaultColorHex);
    const auto digits = [](double part) { return static_cast<unsigned>(std::clamp(part, 0.0, 1.0) * 255); };
    char text[10];
    if (parts->alpha < 1)
        std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", digits(parts->red), digits(parts->green),
            digits(parts->blue), digits(parts->alpha));
    else
        std::snprintf(
            text, sizeof text, "#%02X%02X%02X", digits(parts->red), digits(parts->green), digits(parts->blue));
    return string(text);
}

} // namespace appledger
