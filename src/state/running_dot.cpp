#include "state/running_dot.h"

#include <algorithm>
#include <cctype>

namespace appledger {

using namespace platform;

namespace {

constexpr CGFloat gapUnderImage = 9;
constexpr CGFloat gapUnderIconView = 6;
constexpr CGFloat gapBesideText = 7;
constexpr CGFloat leastLabelAlpha = 0.05;
constexpr CGFloat fullLabelAlpha = 0.95;
constexpr CGFloat leastPresentAlpha = 0.1;

} // namespace

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
