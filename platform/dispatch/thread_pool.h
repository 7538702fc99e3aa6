#pragma once

#include "platform/dispatch/queue.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>

namespace platform::detail {

/// The threads on which the global and serial queues run: started when they are first needed, kept until the process
/// ends. What is more urgent goes first, and finds a thread however much of what is less urgent takes its time.
class ThreadPool {
public:
    /// The one of this process; never destroyed, since its threads outlive main().
    static ThreadPool& shared();

    /// Any thread. Where no thread can be started now, the work waits for one.
    void add(QueuePriority priority, Work work);

private:
    /// One urgency, the most urgent first.
    struct Level {
        unsigned most; ///< threads that may run work of this level and of those below it
        unsigned running = 0;
        std::deque<Work> ready {};
    };

    void serve();
    /// The most urgent level that has work and may run it now, or null.
    Level* nextLevel();
    /// Has a thread come for what may run now, if anything may.
    void callThread();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::array<Level, 4> levels_ { Level { 10 }, Level { 8 }, Level { 6 }, Level { 4 } };
    unsigned threadCount_ = 0;
    unsigned idleCount_ = 0;
    unsigned calledCount_ = 0; ///< of the idle ones, those that have been called and haven't come yet
    bool triesAgain_ = false; ///< no thread could be started, and it will be tried again
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
    void startThread();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::multimap<std::chrono::nanoseconds, Delayed> delayed_; ///< equal times in the order of their insertion
    bool started_ = false;
    bool triesAgain_ = false;
};

/// Starts a thread that nobody joins and that takes no signals: those of the process are its main thread's. False when
/// the system has no thread to give now.
[[nodiscard]] bool startServiceThread(Work work);

} // namespace platform::detail
