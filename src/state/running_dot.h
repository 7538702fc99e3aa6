#pragma once

#include "platform/graphics/geometry.h"

#include <optional>
#include <string_view>

/// Where the dot of a running application stands and how it shows, on plain values. Points, in the coordinates of
/// the icon view.

namespace appledger {

inline constexpr platform::CGFloat runningDotSize = 6;

/// Whether the place that an icon view names is in the Dock: upper and lower case are one.
bool isDockLocation(std::string_view location);

struct ImageBox {
    platform::CGPoint center;
    platform::CGSize size;
};

struct LabelBox {
    platform::CGPoint center {};
    platform::CGFloat width = 0;
    platform::CGFloat alpha = 1;
    bool isHidden = false;
};

/// Under the icon's image, or under the icon view where there is none.
platform::CGPoint dotCenterInDock(const platform::CGSize& iconView, const std::optional<ImageBox>& image);

/// To the right of the name, which its label cuts off where it is too long.
platform::CGPoint dotCenterBesideLabel(
    const platform::CGSize& iconView, const LabelBox& label, platform::CGFloat textWidth);

/// How strongly the dot shows beside its label; empty when it hides with it.
std::optional<platform::CGFloat> dotStrength(const LabelBox& label);

enum class DotAppearance {
    FollowsLabel, ///< at the strength of a label that fades, without an animation
    FadesIn,
    Stands,
};

DotAppearance dotAppearance(platform::CGFloat strength, platform::CGFloat presentAlpha);

} // namespace appledger
