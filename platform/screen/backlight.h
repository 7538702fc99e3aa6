#pragma once

namespace platform {

/// What lights the screen: the host's business. `UIScreen` reads and writes its brightness through it, 0.0 to 1.0; what
/// is written comes as it was given. Main thread.
struct Backlight {
    double (*level)() = nullptr;
    void (*setLevel)(double level) = nullptr;
};

void setBacklight(const Backlight& backlight) noexcept;

/// Both functions, or, in a process whose host has set none, a screen at half strength that stays there.
const Backlight& backlight() noexcept;

} // namespace platform
