#pragma once

#include "platform/runtime/object.h"

#include <string_view>

/// The applications that SpringBoard knows.

namespace phone {

platform::id applicationController();

/// Nil when no such application is installed.
platform::id applicationNamed(std::string_view bundleIdentifier);

} // namespace phone
