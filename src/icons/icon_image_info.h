#pragma once

#include "platform/graphics/geometry.h"

namespace appledger {

/// What the Home Screen says of the picture that it wants, by value.
struct SBIconImageInfo {
    platform::CGSize size; ///< in points
    double scale = 1; ///< pixels a point
    double continuousCornerRadius = 0;
};

} // namespace appledger

template <> inline constexpr std::string_view
    platform::typeEncoding<appledger::SBIconImageInfo> = "{SBIconImageInfo={CGSize=dd}dd}";
