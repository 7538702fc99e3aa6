#pragma once

#include "platform/graphics/bitmap.h"

namespace platform {

/// The bitmap at one pixel for each square of `factor` by `factor`, whose mean it is. Squares that the bitmap ends in
/// are the mean of what there is of them. From 1 to `mostReduced`.
constexpr double mostReduced = 256;
Bitmap reducedBy(const Bitmap& bitmap, int factor);

/// What files of pictures bring along, so that who shows them small needn't read the rest: the shorter side has so many
/// pixels. An icon of the Home Screen has 180, and is drawn 1.3 times as large behind its own round corners; up to a
/// third more than the 180 cairo draws in a twentieth of the time that its better filter takes.
constexpr int smallCopySide = 234;
constexpr int largestSideWithoutCopy = 240;

/// The size of a small copy; empty for pictures that are drawn as fast without one, or very long.
struct PixelSize {
    int width;
    int height;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};
std::optional<PixelSize> smallCopySize(long width, long height);

std::optional<Bitmap> smallCopyOf(const Bitmap& bitmap);

} // namespace platform
