#pragma once

#include "core/policies.h"
#include "icons/icon_cache.h"
#include "platform/foundation/values.h"
#include "platform/graphics/bitmap.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"
#include "support/temporary_device.h"

#include <functional>
#include <sstream>
#include <string>

/// Pictures of plain colours, and what is seen of them on icons.

namespace support {

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t green = 0xFF00FF00;
constexpr std::uint32_t blue = 0xFF0000FF;
constexpr std::uint32_t clear = 0;

/// The bytes of a PNG file whose pixels the function says.
inline std::string png(int width, int height, const std::function<std::uint32_t(int x, int y)>& colorAt)
{
    platform::Bitmap bitmap = *platform::Bitmap::make(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            bitmap.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)]
                = colorAt(x, y);
    return platform::encodePng(bitmap);
}

inline std::string plainPng(std::uint32_t color, int side = 64)
{
    return png(side, side, [color](int, int) { return color; });
}

inline platform::id imageOf(const std::string& bytes, double scale = 1)
{
    return platform::send<"imageWithData:scale:">(
        platform::id(platform::classNamed<"UIImage">()), platform::data(bytes), scale);
}

inline platform::Bitmap pixelsOf(const platform::id& image)
{
    const auto bytes = platform::asData(platform::UIImagePNGRepresentation(image));
    auto bitmap = bytes ? platform::decodePicture(*bytes) : std::nullopt;
    return bitmap ? std::move(*bitmap) : platform::Bitmap {};
}

/// "red", "green", "blue", "clear" or the pixel's number.
inline std::string nameOfColor(std::uint32_t pixel)
{
    switch (pixel) {
    case red:
        return "red";
    case green:
        return "green";
    case blue:
        return "blue";
    case clear:
        return "clear";
    default:
        std::ostringstream text;
        text << std::hex << pixel;
        return text.str();
    }
}

/// The colour at that part of the width and height, 0 to 1; "nil" for no image.
inline std::string colorAt(const platform::id& image, double x, double y)
{
    const platform::Bitmap bitmap = pixelsOf(image);
    if (bitmap.pixels.empty())
        return "nil";
    const auto at = [](double part, int length) { return std::min(static_cast<int>(part * length), length - 1); };
    const auto index = static_cast<std::size_t>(at(y, bitmap.height)) * static_cast<std::size_t>(bitmap.width)
        + static_cast<std::size_t>(at(x, bitmap.width));
    return nameOfColor(bitmap.pixels[index]);
}

/// The colour in the middle.
inline std::string middleOf(const platform::id& image)
{
    return colorAt(image, 0.5, 0.5);
}

inline std::string iconFile(std::string_view identifier)
{
    return std::string(appledger::customIconDirectory).append("/").append(identifier).append(".png");
}

/// As a writer that has changed the icon of that application, or of all of them (""), in a process that then hears.
inline void announceIcon(std::string_view identifier)
{
    const auto defaults = appledger::preferences();
    if (!identifier.empty())
        defaults->setObject(platform::string(identifier), appledger::preference::lastModifiedIcon);
    defaults->synchronize();
    appledger::ALClearSpecificIconCache();
}

/// Puts the icon file there, and tells.
inline void giveIcon(const TemporaryDevice& device, std::string_view identifier, const std::string& bytes)
{
    device.put(iconFile(identifier), bytes);
    announceIcon(identifier);
}

} // namespace support
