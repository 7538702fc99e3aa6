#pragma once

#include "platform/dispatch/queue.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>

namespace platform::detail {

/// The threads on which the global and serial queues run: started when they are first needed, at most
/// `largestThreadCount`, kept until the process ends. What is more urgent goes first.
class ThreadPool {
public:
    /// The one of this process; never destroyed, since its threads outlive main().
    static ThreadPool& shared();

    /// Any thread.
    void add(QueuePriority priority, Work work);

private:
    static constexpr unsigned largestThreadCount = 8;

    void serve();
    std::deque<Work>* mostUrgent();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::array<std::deque<Work>, 4> ready_; ///< the most urgent first
    std::size_t readyCount_ = 0;
    unsigned threadCount_ = 0;
    unsigned idleCount_ = 0;
};

/// The thread that waits for the delayed work of the global and serial queues and queues it there, in the
/// order of the times. Started when it is first needed.
class Timer {
public:
    static Timer& shared();

    /// Queues the work once the clock shows `time`. Any thread.
    void addAt(std::chrono::nanoseconds time, dispatch_queue_t queue, Work work);

private:
    struct Delayed {
        dispatch_queue_t queue;
        Work work;
    };

    void serve();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::multimap<std::chrono::nanoseconds, Delayed> delayed_; ///< equal times in the order of their insertion
    bool started_ = false;
};

/// Starts a thread that nobody joins and that takes no signals: those of the process are its main thread's.
void startServiceThread(Work work);

} // namespace platform::detail
