#pragma once

#include <string>

/// What the device's hardware is set to, a finite number from 0.0 to 1.0 whatever was asked for and whatever the file
/// of the levels holds. A setting outlives the processes that make it: it is written to the device once the main queue
/// comes to it, and read when a process first asks.

namespace phone {

enum class HardwareLevel { MediaVolume, Brightness };

/// Main thread.
double hardwareLevel(HardwareLevel level);

/// Holds the value to 0.0 to 1.0; what is no number changes nothing. Main thread.
void setHardwareLevel(HardwareLevel level, double value);

/// Why the last write didn't keep the levels, for people; "" when they are kept. Main thread.
const std::string& unkeptLevels();

} // namespace phone
