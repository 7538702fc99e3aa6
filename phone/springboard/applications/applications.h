#pragma once

#include "platform/runtime/object.h"

#include <string_view>

/// The applications that SpringBoard knows.

namespace phone {

platform::id applicationController();

/// Nil when no such application is installed.
platform::id applicationNamed(std::string_view bundleIdentifier);

/// The same, and also a view service: an application without an icon, of which others show a part. There is one object
/// of each.
platform::id applicationOrServiceNamed(std::string_view bundleIdentifier);

} // namespace phone
