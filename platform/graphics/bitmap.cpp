#include "platform/graphics/bitmap.h"

namespace platform {

std::optional<Bitmap> Bitmap::make(long width, long height)
{
    constexpr long most = mostPixels;
    if (width <= 0 || height <= 0 || width > most || height > most / width)
        return std::nullopt;
    return Bitmap { static_cast<int>(width), static_cast<int>(height),
        std::vector<std::uint32_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) };
}

Color Bitmap::colorAt(int x, int y) const
{
    const std::uint32_t pixel
        = pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    const double alpha = pixel >> 24;
    if (alpha == 0)
        return { 0, 0, 0, 0 };
    return { (pixel >> 16 & 0xFF) / alpha, (pixel >> 8 & 0xFF) / alpha, (pixel & 0xFF) / alpha, alpha / 255 };
}

} // namespace platform
