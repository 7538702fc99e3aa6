#pragma once

#include <chrono>
#include <optional>

/// The display of the volume that appears when the volume changes.

namespace phone {

struct VolumeHUDShowing {
    double volume;
    std::chrono::nanoseconds time; ///< on the clock
};

/// When it last appeared; empty if it never did. Main thread.
std::optional<VolumeHUDShowing> lastVolumeHUDShowing();

/// Has the volume control hear of changes. Once, at SpringBoard's start.
void startVolumeControl();

} // namespace phone
