#pragma once

#include "platform/runtime/object.h"

#include <functional>
#include <string>

/// How an application's picture is changed, and how everything that shows icons comes to hear of it. The order of a
/// change is always the same: the file, the name of the application in the domain, the notification to all processes,
/// and last the refresh, which is for `then` to begin (icons/home_screen_refresh.h), so that whoever wakes up finds the
/// new file. Failures are passed over in silence. SpringBoard,
/// main thread; `then` runs there too.

namespace appledger {

using Then = std::function<void()>;

/// Makes `image` the application's picture: its centre square with rounded corners, drawn and written off the main
/// queue. Nothing for a nil image or an empty identifier.
void saveCustomIcon(const std::string& bundleIdentifier, const platform::id& image, Then then);

/// Gives the application its own picture back. Nothing for an empty identifier.
void resetCustomIcon(const std::string& bundleIdentifier, const Then& then);

/// Has every process forget all pictures, and the Home Screen lay every icon out anew; `bundleIdentifier` is of the
/// application that it was asked from, and may be empty.
void refreshAllIcons(const std::string& bundleIdentifier, Then then);

} // namespace appledger
