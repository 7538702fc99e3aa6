#include "platform/graphics/appearance.h"

#include <atomic>
#include <utility>

namespace platform {

namespace {

enum Said { Nothing, Light, Dark };

std::atomic<bool> screenIsDark = false;
thread_local int said = Nothing;

} // namespace

bool isDarkNow() noexcept
{
    return said == Nothing ? screenIsDark.load(std::memory_order_relaxed) : said == Dark;
}

void setScreenDark(bool dark) noexcept
{
    screenIsDark.store(dark, std::memory_order_relaxed);
}

AppearanceScope::AppearanceScope(bool dark) noexcept
    : outer_(std::exchange(said, dark ? Dark : Light))
{
}

AppearanceScope::~AppearanceScope()
{
    said = outer_;
}

} // namespace platform
