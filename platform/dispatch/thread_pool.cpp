#include "platform/dispatch/thread_pool.h"

#include "platform/dispatch/clock.h"
#include "platform/dispatch/main_queue.h"

#include <algorithm>
#include <csignal>
#include <exception>
#include <thread>
#include <utility>

namespace platform::detail {

namespace {

std::size_t urgency(QueuePriority priority)
{
    switch (priority) {
    case QueuePriority::High:
        return 0;
    case QueuePriority::Default:
        return 1;
    case QueuePriority::Low:
        return 2;
    case QueuePriority::Background:
        return 3;
    }
    return 1;
}

} // namespace

bool startServiceThread(Work work)
{
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former);
    bool started = true;
    try {
        std::thread([work = std::move(work)] { run(work); }).detach();
    } catch (const std::exception&) { // no thread, or no memory for one
        started = false;
    }
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
    return started;
}

namespace {

/// The main thread is there whatever the system is short of.
void tryAgainLater(Work work)
{
    constexpr std::chrono::milliseconds pause(50);
    MainQueue::shared().addAt(timeAfter(clockNow(), pause), std::move(work));
}

} // namespace

ThreadPool& ThreadPool::shared()
{
    static auto* const pool = new ThreadPool;
    return *pool;
}

void ThreadPool::add(QueuePriority priority, Work work)
{
    const std::lock_guard lock(mutex_);
    levels_[urgency(priority)].ready.push_back(std::move(work));
    callThread();
}

ThreadPool::Level* ThreadPool::nextLevel()
{
    for (auto level = levels_.begin(); level != levels_.end(); ++level) {
        unsigned running = 0;
        for (auto below = level; below != levels_.end(); ++below)
            running += below->running;
        if (running >= level->most)
            return nullptr; // nor may a level below this one
        if (!level->ready.empty())
            return &*level;
    }
    return nullptr;
}

void ThreadPool::callThread()
{
    if (!nextLevel())
        return;
    if (idleCount_ > calledCount_) {
        ++calledCount_;
        changed_.notify_one();
    } else if (threadCount_ == levels_.front().most) {
        return; // who is done looks for more
    } else if (startServiceThread([this] { serve(); })) {
        ++threadCount_;
    } else if (!std::exchange(triesAgain_, true)) {
        tryAgainLater([this] {
            const std::lock_guard lock(mutex_);
            triesAgain_ = false;
            callThread();
        });
    }
}

void ThreadPool::serve()
{
    std::unique_lock lock(mutex_);
    while (true) {
        while (Level* const level = nextLevel()) {
            Work work = std::move(level->ready.front());
            level->ready.pop_front();
            ++level->running;
            // After a shortage others wait, for whom no thread has been called.
            callThread();
            lock.unlock();
            run(work);
            work = nullptr;
            lock.lock();
            --level->running;
        }
        ++idleCount_;
        changed_.wait(lock, [this] { return calledCount_ > 0; });
        --calledCount_;
        --idleCount_;
    }
}

Timer& Timer::shared()
{
    static auto* const timer = new Timer;
    return *timer;
}

void Timer::addAt(std::chrono::nanoseconds time, dispatch_queue_t queue, Work work)
{
    const std::lock_guard lock(mutex_);
    delayed_.emplace(time, Delayed { std::move(queue), std::move(work) });
    startThread();
    changed_.notify_one();
}

void Timer::startThread()
{
    if (started_)
        return;
    started_ = startServiceThread([this] { serve(); });
    if (!started_ && !std::exchange(triesAgain_, true))
        tryAgainLater([this] {
            const std::lock_guard lock(mutex_);
            triesAgain_ = false;
            startThread();
        });
}

void Timer::serve()
{
    std::unique_lock lock(mutex_);
    while (true) {
        if (delayed_.empty()) {
            changed_.wait(lock);
            continue;
        }
        const auto next = delayed_.begin()->first;
        if (next > std::chrono::steady_clock::now().time_since_epoch()) {
            changed_.wait_until(lock, std::chrono::steady_clock::time_point(next));
            continue;
        }
        Delayed due = std::move(delayed_.extract(delayed_.begin()).mapped());
        lock.unlock();
        dispatch_async(due.queue, std::move(due.work));
        due = {};
        lock.lock();
    }
}

} // namespace platform::detail
