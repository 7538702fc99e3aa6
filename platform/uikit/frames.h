#pragma once

#include <chrono>
#include <functional>

namespace platform {

/// From one frame to the next.
inline constexpr std::chrono::nanoseconds frameDuration = std::chrono::microseconds { 16'667 };

/// Calls the step on the main queue at each frame from the next one on, until it answers false.
void eachFrame(std::function<bool()> step);

} // namespace platform
