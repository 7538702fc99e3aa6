#pragma once

#include "platform/graphics/geometry.h"

namespace phone {

/// What the Home Screen says of the picture that it wants of an icon, by value.
struct SBIconImageInfo {
    platform::CGSize size; ///< in points
    double scale = 1; ///< pixels a point
    double continuousCornerRadius = 0;
};

} // namespace phone

template <>
inline constexpr std::string_view platform::typeEncoding<phone::SBIconImageInfo> = "{SBIconImageInfo={CGSize=dd}dd}";
