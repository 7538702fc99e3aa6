#include "platform/dispatch/clock.h"

#include "platform/dispatch/main_queue.h"
#include "platform/dispatch/run_loop.h"

#include <algorithm>
#include <atomic>

namespace platform {

namespace {

constexpr std::int64_t runningClock = -1;

/// Far from zero, as on a device that has been up for a while: code takes a time of zero for "never".
constexpr std::int64_t firstHeldTime = 1'000'000'000'000;

/// What a held clock shows, in nanoseconds.
std::atomic<std::int64_t> heldTime { runningClock };

} // namespace

std::chrono::nanoseconds clockNow() noexcept
{
    const std::int64_t held = heldTime.load(std::memory_order_acquire);
    if (held != runningClock)
        return std::chrono::nanoseconds(held);
    return std::chrono::steady_clock::now().time_since_epoch();
}

double CACurrentMediaTime() noexcept
{
    return std::chrono::duration<double>(clockNow()).count();
}

void holdClock() noexcept
{
    std::int64_t expected = runningClock;
    heldTime.compare_exchange_strong(expected, firstHeldTime, std::memory_order_acq_rel);
}

bool clockIsHeld() noexcept
{
    return heldTime.load(std::memory_order_acquire) != runningClock;
}

void advanceClock(std::chrono::nanoseconds duration)
{
    if (!clockIsHeld())
        return;
    const std::chrono::nanoseconds end = detail::timeAfter(clockNow(), duration);
    // Work may itself advance the clock past a time that is planned here, and it never goes back.
    const auto moveTo = [](std::chrono::nanoseconds time) {
        heldTime.store(std::max(clockNow(), time).count(), std::memory_order_release);
    };
    runUntilIdle();
    for (auto next = detail::MainQueue::shared().nextTime(); next && *next <= end;
         next = detail::MainQueue::shared().nextTime()) {
        moveTo(*next);
        runUntilIdle();
    }
    moveTo(end);
}

} // namespace platform
