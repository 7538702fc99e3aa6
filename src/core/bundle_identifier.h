#pragma once

#include "platform/foundation/values.h"
#include "platform/runtime/object.h"

#include <optional>

namespace appledger {

/// What the object answers to `bundleID`, or else to `bundleIdentifier`; nil when it answers neither, for
/// nil, and when it raises on the way.
platform::id ALSafeExtractBundleID(const platform::id& object);

/// What an icon or its view answers to `applicationBundleIdentifier`, or else to `applicationBundleID`; empty
/// when it answers neither or no string: a folder, a widget.
std::optional<platform::StringValue> applicationOfIcon(const platform::id& icon);

} // namespace appledger
