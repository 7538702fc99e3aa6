#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Colours in sRGB, each part from 0 to 1, not multiplied by alpha.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    friend bool operator==(const Color&, const Color&) = default;
};

/// Pixels in rows from the top, each 0xAARRGGBB with its colours multiplied by its alpha.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels {};

    /// Transparent. Empty when a side isn't above 0 or there are more than `mostPixels`.
    static std::optional<Bitmap> make(long width, long height);

    /// The colour at a pixel within the bitmap, no longer multiplied.
    Color colorAt(int x, int y) const;
};

/// What is refused as absurd: 128 MiB of pixels.
constexpr std::size_t mostPixels = std::size_t { 1 } << 25;

/// The picture that the bytes of a PNG or JPEG file hold, whatever its depth and colours, turned upright as its
/// metadata asks; of an animation the still. Empty for any other bytes, for a file that is damaged or cut off, and for
/// a picture of absurd size, before room for it is made.
std::optional<Bitmap> decodePicture(std::string_view bytes);

/// The bytes of a PNG file, the same for the same pixels; without alpha when all are opaque. That of a large picture
/// brings a small copy along for who opens it as a PictureFile. "" for an empty bitmap.
std::string encodePng(const Bitmap& bitmap);

} // namespace platform
