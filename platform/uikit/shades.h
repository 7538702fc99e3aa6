#pragma once

#include "platform/uikit/window.h"

namespace platform {

/// A colour of the system's own parts in both of its appearances.
struct Shade {
    Color light;
    Color dark;

    /// The one that is in force now.
    Color color() const { return screenFacts().style == InterfaceStyle::Dark ? dark : light; }
};

namespace shade {

constexpr Color gray(int level, double alpha = 1)
{
    return { level / 255.0, level / 255.0, level / 255.0, alpha };
}
constexpr Color rgb(int red, int green, int blue, double alpha = 1)
{
    return { red / 255.0, green / 255.0, blue / 255.0, alpha };
}

inline constexpr Shade label { gray(0), gray(255) };
inline constexpr Shade secondaryLabel { rgb(60, 60, 67, 0.6), rgb(235, 235, 245, 0.6) };
inline constexpr Shade tertiaryLabel { rgb(60, 60, 67, 0.3), rgb(235, 235, 245, 0.3) };
inline constexpr Shade separator { rgb(60, 60, 67, 0.29), rgb(84, 84, 88, 0.6) };
inline constexpr Shade background { gray(255), gray(0) };
inline constexpr Shade groupedBackground { rgb(242, 242, 247), gray(0) };
inline constexpr Shade groupedCell { gray(255), rgb(28, 28, 30) };
inline constexpr Shade pressedCell { rgb(209, 209, 214), rgb(58, 58, 60) };
inline constexpr Shade stickyHeader { rgb(242, 242, 247), rgb(28, 28, 30) };
inline constexpr Shade green { rgb(52, 199, 89), rgb(48, 209, 88) };
inline constexpr Shade switchOff { rgb(120, 120, 128, 0.16), rgb(120, 120, 128, 0.32) };
inline constexpr Shade scrollIndicator { gray(0, 0.35), gray(255, 0.35) };
inline constexpr Shade wheel { rgb(60, 60, 67, 0.6), rgb(235, 235, 245, 0.6) };

} // namespace shade

} // namespace platform
