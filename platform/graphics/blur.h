#pragma once

#include <cstdint>

namespace platform {

/// Blurs the alpha of the pixels (rows of `stride` pixels) by about a Gauss curve of that deviation, in pixels; colours
/// become nothing. What would come from beyond the edges is transparent.
void blurAlpha(std::uint32_t* pixels, int width, int height, int stride, double deviation);

/// The same for all parts of the colours; what would come from beyond an edge is as what stands at it.
void blurColors(std::uint32_t* pixels, int width, int height, double deviation);

} // namespace platform
