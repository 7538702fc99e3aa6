#pragma once

#include "platform/foundation/cache.h"

#include <optional>
#include <string>
#include <string_view>

/// What every surface that draws an icon shares in one process: which applications have an icon file of
/// their own, a token for each that changes with the file, and one cache of rendered images whose keys end
/// in the token.
///
/// A bundle identifier here is what stands in a file name and in cache keys, and is taken as it comes: the
/// device's file layer keeps a hostile one inside the device.

namespace appledger {

inline constexpr std::string_view customIconDirectory = "/var/mobile/Library/Preferences/AppLedgerIcons";

/// The icon file of that application; empty for an empty identifier.
std::optional<std::string> ALCustomIconFilePath(std::string_view bundleIdentifier);

/// The same if the file exists. The disk is looked at only until the answer is known, so that a file which
/// comes or goes later isn't noticed before ALInvalidateCustomIconPresence().
std::optional<std::string> ALCustomIconPathIfExists(std::string_view bundleIdentifier);

/// What is known of that by now, without a look; empty when nothing is.
std::optional<bool> knownCustomIconPresence(std::string_view bundleIdentifier);

/// How many changes of this application's icon the process has heard of, in decimal digits.
std::string ALGetCacheToken(std::string_view bundleIdentifier);

/// Forgets whether the application has an icon file; for an empty identifier, whether any has.
void ALInvalidateCustomIconPresence(std::string_view bundleIdentifier);

/// The rendered images, at most 1,500.
platform::NSCache& ALGetImageCache();

/// The observer of "com.appledger.clearcache". Takes the identifier that the writer has left in the domain
/// and bumps its token; with none there, empties the image cache and forgets every file.
void ALClearSpecificIconCache();

/// The observer of "com.appledger.forcerefresh": on the main queue empties the system's icon caches and
/// tells the views of this process.
void ALForceRefreshIconsCallback();

} // namespace appledger
