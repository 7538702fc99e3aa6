#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

/// The main thread's run loop, which the host of the process drives: it runs the main queue's work,
/// delayed work of the main queue, and readers of file descriptors.

namespace platform {

/// Runs until stopRunLoop(). Main thread.
void runRunLoop();

/// Ends runRunLoop() after the work at hand; what is queued behind it stays queued. When the loop isn't
/// running, the next runRunLoop() ends at once. Any thread.
void stopRunLoop();

/// Runs what is ready, and what that makes ready, and returns, after `limit` (of the machine's time) at the latest;
/// with the clock held, the global and serial queues too. Main thread. True when it ran anything.
bool runUntilIdle(std::chrono::milliseconds limit = std::chrono::hours(1));

/// Runs the loop until the condition holds or the time (of the machine, not of a held clock) is over; true
/// when it holds. Main thread.
bool runUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);

/// Calls `readable` on the main thread whenever the descriptor can be read or is at its end. The
/// descriptor stays the caller's, who removes the source before closing it. A source is not called again
/// while its call runs the loop. Main thread.
using RunLoopSource = std::uint64_t;
RunLoopSource addRunLoopSource(int descriptor, std::function<void()> readable);
void removeRunLoopSource(RunLoopSource source);

} // namespace platform
