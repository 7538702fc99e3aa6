#pragma once

#include "platform/dispatch/queue.h"

#include <chrono>
#include <deque>
#include <map>
#include <mutex>
#include <optional>

namespace platform::detail {

/// `now + delay`; the latest time there is where that can't be counted, and `now` for a delay below zero.
std::chrono::nanoseconds timeAfter(std::chrono::nanoseconds now, std::chrono::nanoseconds delay) noexcept;

/// Calls the work; an exception that leaves it ends the process.
void run(const Work& work) noexcept;

/// The work that the main run loop runs, and its delayed work. With the clock held, the work of all
/// queues. The first four may be called from any thread, the others by the thread that runs the loop.
class MainQueue {
public:
    /// The one of this process; never destroyed, since threads of the pool outlive main().
    static MainQueue& shared();

    void add(Work work);
    void addAt(std::chrono::nanoseconds time, Work work);

    /// Ends a sleep, now or when it begins.
    void wake();

    /// The time on the clock of the earliest delayed work.
    std::optional<std::chrono::nanoseconds> nextTime() const;

    enum class Stop { WhenBatchIsDone, AfterStopRunLoop };

    /// Runs what is queued or due at this moment, but not what that queues. True when it ran anything.
    bool runBatch(Stop stop);

    /// To be called before and after waiting for `wakeDescriptor()`. The first returns how long to wait at
    /// most; empty: until something comes.
    std::optional<std::chrono::nanoseconds> beginSleep();
    void endSleep();
    int wakeDescriptor() const noexcept { return wakeDescriptor_; }

    void requestStop();
    bool takeStop() noexcept { return stop_.exchange(false, std::memory_order_acq_rel); }

private:
    MainQueue();

    void wakeLocked();

    mutable std::mutex mutex_;
    std::deque<Work> ready_;
    std::multimap<std::chrono::nanoseconds, Work> delayed_; ///< equal times in the order of their insertion
    bool sleeping_ = false;
    bool woken_ = false;
    std::atomic<bool> stop_ { false };
    const int wakeDescriptor_;
};

} // namespace platform::detail
