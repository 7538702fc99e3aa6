#include "platform/dispatch/thread_pool.h"

#include "platform/dispatch/main_queue.h"

#include <algorithm>
#include <csignal>
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

void startServiceThread(Work work)
{
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former);
    std::thread([work = std::move(work)] { run(work); }).detach();
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
}

ThreadPool& ThreadPool::shared()
{
    static auto* const pool = new ThreadPool;
    return *pool;
}

void ThreadPool::add(QueuePriority priority, Work work)
{
    const std::lock_guard lock(mutex_);
    ready_[urgency(priority)].push_back(std::move(work));
    ++readyCount_;
    // A thread that was notified but hasn't woken counts as idle, so compare with all that waits.
    if (readyCount_ > idleCount_ && threadCount_ < largestThreadCount) {
        ++threadCount_;
        startServiceThread([this] { serve(); });
    } else {
        changed_.notify_one();
    }
}

std::deque<Work>* ThreadPool::mostUrgent()
{
    const auto found = std::ranges::find_if(ready_, [](const auto& works) { return !works.empty(); });
    return found == ready_.end() ? nullptr : &*found;
}

void ThreadPool::serve()
{
    std::unique_lock lock(mutex_);
    while (true) {
        while (std::deque<Work>* const works = mostUrgent()) {
            Work work = std::move(works->front());
            works->pop_front();
            --readyCount_;
            lock.unlock();
            run(work);
            work = nullptr;
            lock.lock();
        }
        ++idleCount_;
        changed_.wait(lock);
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
    if (!std::exchange(started_, true))
        startServiceThread([this] { serve(); });
    changed_.notify_one();
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
