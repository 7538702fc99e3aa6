#include "platform/graphics/picture_formats.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/png_chunks.h"

#include <png.h>

namespace platform {

namespace {

/// Frees what libpng has made for a picture, whichever way its reading ends.
struct PngReader {
    png_image image {};
    PngReader() { image.version = PNG_IMAGE_VERSION; }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_image_free(&image); }
};

/// Of every kind, and the judge of what is damaged.
std::optional<Bitmap> decodeAnyPng(std::string_view bytes)
{
    PngReader reader;
    if (!png_image_begin_read_from_memory(&reader.image, bytes.data(), bytes.size())
        || !canHold(bytes.size(), reader.image.width, reader.image.height))
        return std::nullopt;
    std::optional<Bitmap> bitmap = Bitmap::make(reader.image.width, reader.image.height);
    if (!bitmap)
        return std::nullopt;
    reader.image.format = PNG_FORMAT_RGBA;
    if (!png_image_finish_read(&reader.image, nullptr, bitmap->pixels.data(), 0, nullptr))
        return std::nullopt;
    // Each pixel is read before it is written.
    readSamples(
        reinterpret_cast<const std::uint8_t*>(bitmap->pixels.data()), bitmap->pixels.size(), 4, bitmap->pixels.data());
    return bitmap;
}

/// The metadata of a camera, which stands in a chunk of its own.
Orientation orientationOf(std::string_view file)
{
    file.remove_prefix(png::signature.size());
    while (const auto chunk = png::takeChunk(file))
        if (chunk->name == "eXIf" && chunk->isWhole)
            return orientationFrom(chunk->content);
    return Orientation::Upright;
}

} // namespace

bool canHold(std::size_t fileSize, std::uint64_t width, std::uint64_t height)
{
    // Deflate makes at most 1032 bytes of one, and a pixel takes an eighth of a byte or more. A JPEG spends at least a
    // bit on one component of 16 x 16 pixels, which is less.
    constexpr std::uint64_t mostPixelsFromByte = 1032 * 8;
    return width * height / mostPixelsFromByte <= fileSize;
}

std::optional<Bitmap> decodePng(std::string_view bytes)
{
    if (auto plain = decodePlainPng(bytes))
        return plain;
    auto bitmap = decodeAnyPng(bytes);
    return bitmap ? std::optional(uprightFrom(std::move(*bitmap), orientationOf(bytes))) : std::nullopt;
}

} // namespace platform
