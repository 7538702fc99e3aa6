#pragma once

#include "icons/icon_cache.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/object.h"

#include <optional>
#include <string>
#include <string_view>

/// What every hook that shows the owner's picture does: look into the cache, find the file, load it, draw it, keep it.
/// Any thread.

namespace appledger {

namespace detail {

std::string formatted(double number); ///< "60.000000"
std::string formatted(int number);

} // namespace detail

/// The key of a rendered image: the application, the surface, what else tells one rendering from another, and last the
/// token, so that a change of the icon makes older images unreachable. "com.example.notes_gen_60.000000_0".
template <class... Numbers>
std::string iconKey(std::string_view identifier, std::string_view surface, Numbers... numbers)
{
    std::string key(identifier);
    key.append("_").append(surface);
    (key.append("_").append(detail::formatted(numbers)), ...);
    return key.append("_").append(ALGetCacheToken(identifier));
}

/// How it is found out whether there is a file: once, and then remembered; or anew each time.
enum class FileTest { Remembered, EachTime };

/// The picture of the application's icon file; nil when there is none, or none that can be read.
platform::id loadCustomIcon(std::string_view identifier, FileTest test = FileTest::Remembered);

/// The corner radius of icons outside of the Home Screen, as a part of their width.
inline constexpr double cornerFactorElsewhere = 0.225;

/// The owner's picture as `draw` makes it of the file's (id(const id& image)), or as it was made before. Empty when the
/// system's own icon is to be shown: that is never kept here. A drawing that fails is a nil, and isn't kept either.
template <class Draw> std::optional<platform::id> customIcon(
    std::string_view identifier, const std::string& key, const Draw& draw, FileTest test = FileTest::Remembered)
{
    if (platform::id kept = ALGetImageCache().objectForKey(key))
        return kept;
    const platform::id image = loadCustomIcon(identifier, test);
    if (!image)
        return std::nullopt;
    std::optional<platform::id> drawn = draw(image);
    if (drawn && *drawn)
        ALGetImageCache().setObject(*drawn, key);
    return drawn;
}

/// The same for a surface other than the Home Screen's icons: with corners of its own width's, and empty for a size
/// that isn't above zero.
std::optional<platform::id> customIconElsewhere(std::string_view identifier, const std::string& key,
    const platform::CGSize& size, double scale, FileTest test = FileTest::Remembered);

/// The Clock and the Calendar, whose icons show the time: their Home Screen icons are left to the system.
bool isLiveIcon(std::string_view identifier);

} // namespace appledger
