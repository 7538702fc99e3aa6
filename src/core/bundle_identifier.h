#pragma once

#include "platform/runtime/object.h"

namespace appledger {

/// What the object answers to `bundleID`, or else to `bundleIdentifier`; nil when it answers neither, for
/// nil, and when it raises on the way.
platform::id ALSafeExtractBundleID(const platform::id& object);

} // namespace appledger
