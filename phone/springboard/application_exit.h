#pragma once

#include <string>

namespace phone {

/// Ends the process of an application, which leaves the front if it was there. False when it doesn't run.
bool endProcessOf(const std::string& bundleIdentifier);

} // namespace phone
