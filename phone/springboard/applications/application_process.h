#pragma once

#include "platform/runtime/object.h"

#include <string>

/// The processes of applications, as SpringBoard sees them. Main thread.

namespace phone {

/// The application runs from now on, if it didn't.
void startProcessOf(const platform::id& application);

/// Ends the process of an application or a view service, which leaves the front if it was there. False when it doesn't
/// run.
bool endProcessOf(const std::string& bundleIdentifier);

} // namespace phone
