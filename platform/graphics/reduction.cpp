#include "platform/graphics/reduction.h"

#include "platform/graphics/canvas.h"

#include <algorithm>

namespace platform {

namespace {

struct Sums {
    std::uint32_t parts[4] {};
};

} // namespace

Bitmap reducedBy(const Bitmap& bitmap, int factor)
{
    Bitmap reduced = *Bitmap::make((bitmap.width + factor - 1) / factor, (bitmap.height + factor - 1) / factor);
    const auto width = static_cast<std::size_t>(bitmap.width);
    const auto step = static_cast<std::size_t>(factor);
    std::vector<Sums> sums(static_cast<std::size_t>(reduced.width));
    std::uint32_t* target = reduced.pixels.data();
    for (int top = 0; top < bitmap.height; top += factor) {
        std::ranges::fill(sums, Sums {});
        const int bottom = std::min(top + factor, bitmap.height);
        for (int y = top; y < bottom; ++y) {
            const std::uint32_t* pixel = bitmap.pixels.data() + static_cast<std::size_t>(y) * width;
            std::size_t left = width;
            for (Sums& sum : sums) {
                // Two parts are added up in one number as long as neither can reach the other.
                std::uint32_t evenParts = 0;
                std::uint32_t oddParts = 0;
                const std::size_t count = std::min(step, left);
                for (std::size_t index = 0; index < count; ++index) {
                    evenParts += pixel[index] & 0x00FF00FF;
                    oddParts += pixel[index] >> 8 & 0x00FF00FF;
                }
                sum.parts[0] += evenParts & 0xFFFF;
                sum.parts[1] += oddParts & 0xFFFF;
                sum.parts[2] += evenParts >> 16;
                sum.parts[3] += oddParts >> 16;
                pixel += count;
                left -= count;
            }
        }
        std::size_t left = width;
        for (const Sums& sum : sums) {
            const auto area
                = static_cast<std::uint32_t>(std::min(step, left)) * static_cast<std::uint32_t>(bottom - top);
            const auto mean = [&](int part) { return (sum.parts[part] + area / 2) / area; };
            *target++ = mean(0) | mean(1) << 8 | mean(2) << 16 | mean(3) << 24;
            left -= std::min(step, left);
        }
    }
    return reduced;
}

std::optional<PixelSize> smallCopySize(long width, long height)
{
    const long shorter = std::min(width, height);
    const long longer = std::max(width, height);
    if (shorter <= largestSideWithoutCopy || longer / shorter >= 3)
        return std::nullopt;
    const auto scaled
        = [shorter](long side) { return static_cast<int>((side * smallCopySide + shorter / 2) / shorter); };
    return PixelSize { scaled(width), scaled(height) };
}

std::optional<Bitmap> smallCopyOf(const Bitmap& bitmap)
{
    const auto size = smallCopySize(bitmap.width, bitmap.height);
    if (!size)
        return std::nullopt;
    Bitmap copy = *Bitmap::make(size->width, size->height);
    Canvas(copy, 1).draw(bitmap, { {}, { static_cast<double>(size->width), static_cast<double>(size->height) } });
    return copy;
}

} // namespace platform
