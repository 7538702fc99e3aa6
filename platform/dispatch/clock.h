#pragma once

#include <chrono>
#include <cstdint>

namespace platform {

/// `CACurrentMediaTime()`: seconds on the platform's clock, which never goes back and has no meaning as a
/// date. Any thread.
double CACurrentMediaTime() noexcept;

/// The same clock as a duration.
std::chrono::nanoseconds clockNow() noexcept;

/// Holds the clock: from now on it stands still until advanceClock() moves it, and all queues, the global
/// ones too, run on the thread that calls runUntilIdle() or advanceClock(). For tests; call it before the
/// first queue is used, and never undo it.
void holdClock() noexcept;
bool clockIsHeld() noexcept;

/// Moves a held clock (one that runs is left alone): runs what is queued; then, in order of their times, each delayed
/// piece of work that falls due by then with the clock at its time, and what it queues in turn; and ends `duration`
/// later.
void advanceClock(std::chrono::nanoseconds duration);

} // namespace platform
