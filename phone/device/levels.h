#pragma once

/// What the device's hardware is set to, from 0.0 to 1.0. A setting outlives the processes that make it: it is
/// written to the device once the main queue comes to it, and read when a process first asks.

namespace phone {

enum class HardwareLevel { MediaVolume, Brightness };

/// Main thread.
double hardwareLevel(HardwareLevel level);

/// Holds the value to 0.0 to 1.0. Main thread.
void setHardwareLevel(HardwareLevel level, double value);

} // namespace phone
