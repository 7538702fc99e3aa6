#pragma once

#include "platform/runtime/object.h"

namespace appledger {

/// Empties "Library/Caches" and "tmp" of the application's data container; the two folders stay. Returns at once: the
/// work is done on the global queue of background priority, silently, and not at all within three seconds of the
/// last time. Nothing for an identifier that is nil or empty, and for an application without a container. Any
/// thread.
void ALPerformBackgroundCacheClear(const platform::id& bundleIdentifier);

} // namespace appledger
