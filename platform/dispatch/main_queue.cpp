#include "platform/dispatch/main_queue.h"

#include "platform/dispatch/activity.h"
#include "platform/dispatch/clock.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform::detail {

namespace {

int makeWakeDescriptor()
{
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "the run loop's wake descriptor");
    return descriptor;
}

} // namespace

std::chrono::nanoseconds timeAfter(std::chrono::nanoseconds now, std::chrono::nanoseconds delay) noexcept
{
    return now + std::clamp(delay, std::chrono::nanoseconds::zero(), std::chrono::nanoseconds::max() - now);
}

void run(const Work& work) noexcept
{
    // Not for the activity in which a thread happens to run the loop.
    const ActivityScope scope(Activity::None);
    work();
}

MainQueue& MainQueue::shared()
{
    static auto* const queue = new MainQueue;
    return *queue;
}

MainQueue::MainQueue()
    : wakeDescriptor_(makeWakeDescriptor())
{
}

void MainQueue::add(Work work)
{
    const std::lock_guard lock(mutex_);
    ready_.push_back(std::move(work));
    wakeLocked();
}

void MainQueue::addAt(std::chrono::nanoseconds time, Work work)
{
    const std::lock_guard lock(mutex_);
    delayed_.emplace(time, std::move(work));
    wakeLocked();
}

void MainQueue::wake()
{
    const std::lock_guard lock(mutex_);
    wakeLocked();
}

void MainQueue::wakeLocked()
{
    if (!sleeping_ || std::exchange(woken_, true))
        return;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(wakeDescriptor_, &one, sizeof one);
}

std::optional<std::chrono::nanoseconds> MainQueue::nextTime() const
{
    const std::lock_guard lock(mutex_);
    if (delayed_.empty())
        return std::nullopt;
    return delayed_.begin()->first;
}

bool MainQueue::runBatch(Stop stop)
{
    std::unique_lock lock(mutex_);
    const auto due = delayed_.upper_bound(clockNow());
    for (auto entry = delayed_.begin(); entry != due; ++entry)
        ready_.push_back(std::move(entry->second));
    delayed_.erase(delayed_.begin(), due);

    bool ranAny = false;
    for (std::size_t count = ready_.size(); count > 0 && !ready_.empty(); --count) {
        if (stop == Stop::AfterStopRunLoop && stop_.load(std::memory_order_acquire))
            break;
        Work work = std::move(ready_.front());
        ready_.pop_front();
        lock.unlock();
        run(work);
        // What the work holds may queue something as it goes.
        work = nullptr;
        ranAny = true;
        lock.lock();
    }
    return ranAny;
}

std::optional<std::chrono::nanoseconds> MainQueue::beginSleep()
{
    const std::lock_guard lock(mutex_);
    if (!ready_.empty() || stop_.load(std::memory_order_acquire))
        return std::chrono::nanoseconds::zero();
    sleeping_ = true;
    if (delayed_.empty())
        return std::nullopt;
    const std::chrono::nanoseconds remaining = delayed_.begin()->first - clockNow();
    if (remaining <= std::chrono::nanoseconds::zero())
        return std::chrono::nanoseconds::zero();
    // Only advanceClock() moves a held clock, and it runs what falls due.
    if (clockIsHeld())
        return std::nullopt;
    return remaining;
}

void MainQueue::endSleep()
{
    const std::lock_guard lock(mutex_);
    sleeping_ = false;
    if (!std::exchange(woken_, false))
        return;
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = read(wakeDescriptor_, &count, sizeof count);
}

void MainQueue::requestStop()
{
    stop_.store(true, std::memory_order_release);
    wake();
}

} // namespace platform::detail
