#pragma once

#include <string>
#include <vector>

namespace phone {

/// Why the screen doesn't go dark by itself: the reasons of the assertions that are held, the oldest first.
std::vector<std::string> idleTimerAssertions();

} // namespace phone
