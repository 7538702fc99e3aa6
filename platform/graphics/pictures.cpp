#include "platform/graphics/bitmap.h"

#include <cstring>
#include <png.h>
#include <turbojpeg.h>

namespace platform {

namespace {

std::uint32_t multiplied(std::uint32_t part, std::uint32_t alpha)
{
    return (part * alpha + 127) / 255;
}

std::uint32_t packed(std::uint32_t red, std::uint32_t green, std::uint32_t blue, std::uint32_t alpha)
{
    return alpha << 24 | multiplied(red, alpha) << 16 | multiplied(green, alpha) << 8 | multiplied(blue, alpha);
}

/// In place, from the bytes blue, green, red, alpha.
void multiplyByAlpha(Bitmap& bitmap)
{
    for (std::uint32_t& pixel : bitmap.pixels)
        if (pixel >> 24 != 0xFF)
            pixel = packed(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF, pixel >> 24);
}

/// Frees what libpng has made for a picture, whichever way its reading ends.
struct PngReader {
    png_image image {};
    PngReader() { image.version = PNG_IMAGE_VERSION; }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_image_free(&image); }
};

std::optional<Bitmap> decodePng(std::string_view bytes)
{
    PngReader reader;
    if (!png_image_begin_read_from_memory(&reader.image, bytes.data(), bytes.size()))
        return std::nullopt;
    // Deflate makes at most 1032 bytes of one, and a pixel takes an eighth of a byte or more: a larger picture isn't in
    // the file, so no room is made for it.
    constexpr std::uint64_t mostPixelsFromByte = 1032 * 8;
    const std::uint64_t pixels = std::uint64_t { reader.image.width } * reader.image.height;
    if (pixels / mostPixelsFromByte > bytes.size())
        return std::nullopt;
    std::optional<Bitmap> bitmap = Bitmap::make(reader.image.width, reader.image.height);
    if (!bitmap)
        return std::nullopt;
    reader.image.format = PNG_FORMAT_BGRA;
    if (!png_image_finish_read(&reader.image, nullptr, bitmap->pixels.data(), 0, nullptr))
        return std::nullopt;
    multiplyByAlpha(*bitmap);
    return bitmap;
}

struct JpegReader {
    const tjhandle handle = tjInitDecompress();
    JpegReader() = default;
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;
    ~JpegReader()
    {
        if (handle)
            tjDestroy(handle);
    }
};

/// Four inks to three colours. Files store the inks inverted: 255 is none.
void convertFromInks(Bitmap& bitmap)
{
    for (std::uint32_t& pixel : bitmap.pixels) {
        unsigned char inks[4];
        std::memcpy(inks, &pixel, sizeof inks);
        const std::uint32_t black = inks[3];
        pixel = packed(multiplied(inks[0], black), multiplied(inks[1], black), multiplied(inks[2], black), 0xFF);
    }
}

std::optional<Bitmap> decodeJpeg(std::string_view bytes)
{
    const JpegReader reader;
    const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colors = 0;
    if (!reader.handle
        || tjDecompressHeader3(reader.handle, data, bytes.size(), &width, &height, &subsampling, &colors) != 0)
        return std::nullopt;
    std::optional<Bitmap> bitmap = Bitmap::make(width, height);
    if (!bitmap)
        return std::nullopt;
    const bool inks = colors == TJCS_CMYK || colors == TJCS_YCCK;
    // A file with thousands of scans would take minutes.
    const int outcome
        = tjDecompress2(reader.handle, data, bytes.size(), reinterpret_cast<unsigned char*>(bitmap->pixels.data()),
            width, 0, height, inks ? TJPF_CMYK : TJPF_BGRA, TJFLAG_LIMITSCANS);
    if (outcome != 0 && tjGetErrorCode(reader.handle) != TJERR_WARNING)
        return std::nullopt;
    if (inks)
        convertFromInks(*bitmap);
    return bitmap;
}

} // namespace

std::optional<Bitmap> decodePicture(std::string_view bytes)
{
    if (bytes.starts_with("\x89PNG"))
        return decodePng(bytes);
    if (bytes.starts_with("\xFF\xD8"))
        return decodeJpeg(bytes);
    return std::nullopt;
}

std::string encodePng(const Bitmap& bitmap)
{
    png_image image {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(bitmap.width);
    image.height = static_cast<png_uint_32>(bitmap.height);
    image.format = PNG_FORMAT_BGRA;
    std::vector<std::uint32_t> pixels = bitmap.pixels;
    for (std::uint32_t& pixel : pixels)
        if (const std::uint32_t alpha = pixel >> 24; alpha != 0 && alpha != 0xFF) {
            const auto divided = [alpha](std::uint32_t part) { return (part * 255 + alpha / 2) / alpha; };
            pixel = alpha << 24 | divided(pixel >> 16 & 0xFF) << 16 | divided(pixel >> 8 & 0xFF) << 8
                | divided(pixel & 0xFF);
        }
    png_alloc_size_t size = 0;
    if (pixels.empty() || !png_image_write_get_memory_size(image, size, 0, pixels.data(), 0, nullptr))
        return {};
    std::string bytes(size, '\0');
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr))
        return {};
    bytes.resize(size);
    return bytes;
}

} // namespace platform
