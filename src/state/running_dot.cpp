#include "state/running_dot.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <string>

namespace appledger {

using namespace platform;

namespace {

constexpr CGFloat gapUnderImage = 9;
constexpr CGFloat gapUnderIconView = 6;
constexpr CGFloat gapBesideText = 7;
constexpr CGFloat leastLabelAlpha = 0.05;
constexpr CGFloat fullLabelAlpha = 0.95;
constexpr CGFloat leastPresentAlpha = 0.1;

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

} // namespace

std::optional<DotColor> parseDotColor(std::string_view text)
{
    std::string digits(text);
    std::erase(digits, '#');
    const std::uint32_t value = scanHexadecimal(digits);
    if (digits.size() == 6)
        return DotColor { part(value, 2), part(value, 1), part(value, 0), 1 };
    if (digits.size() == 8)
        return DotColor { part(value, 3), part(value, 2), part(value, 1), part(value, 0) };
    return std::nullopt;
}

bool isDockLocation(std::string_view location)
{
    constexpr std::string_view dock = "dock";
    const auto equal = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
    return std::search(location.begin(), location.end(), dock.begin(), dock.end(), equal) != location.end();
}

CGPoint dotCenterInDock(const CGSize& iconView, const std::optional<ImageBox>& image)
{
    const CGFloat y
        = image ? image->center.y + image->size.height / 2 + gapUnderImage : iconView.height + gapUnderIconView;
    return { iconView.width / 2, y };
}

CGPoint dotCenterBesideLabel(const CGSize& iconView, const LabelBox& label, CGFloat textWidth)
{
    const CGFloat width = label.width > 0 ? label.width : iconView.width;
    return { label.center.x + std::min(textWidth, width) / 2 + gapBesideText, label.center.y };
}

std::optional<CGFloat> dotStrength(const LabelBox& label)
{
    return label.isHidden || label.alpha < leastLabelAlpha ? std::nullopt : std::optional(label.alpha);
}

DotAppearance dotAppearance(CGFloat strength, CGFloat presentAlpha)
{
    if (strength < fullLabelAlpha)
        return DotAppearance::FollowsLabel;
    return presentAlpha < leastPresentAlpha ? DotAppearance::FadesIn : DotAppearance::Stands;
}

} // namespace appledger
