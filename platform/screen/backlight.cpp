#include "platform/screen/backlight.h"

namespace platform {

namespace {

Backlight& present() noexcept
{
    static Backlight backlight { [] { return 0.5; }, [](double) {} };
    return backlight;
}

} // namespace

void setBacklight(const Backlight& backlight) noexcept
{
    present() = backlight;
}

const Backlight& backlight() noexcept
{
    return present();
}

} // namespace platform
