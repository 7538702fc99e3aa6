#include "platform/dispatch/queue.h"

#include "platform/dispatch/activity.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/main_queue.h"
#include "platform/dispatch/thread_pool.h"

#include <deque>
#include <mutex>
#include <string>
#include <utility>

namespace platform {

class DispatchQueue {
public:
    explicit DispatchQueue(std::string label)
        : label_(std::move(label))
    {
    }
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;
    virtual ~DispatchQueue() = default;

    std::string_view label() const noexcept { return label_; }

    virtual void add(const dispatch_queue_t& self, Work work) = 0;
    virtual void addAt(std::chrono::nanoseconds time, const dispatch_queue_t& self, Work work)
    {
        detail::Timer::shared().addAt(time, self, std::move(work));
    }

private:
    const std::string label_;
};

namespace {

class MainDispatchQueue final : public DispatchQueue {
public:
    using DispatchQueue::DispatchQueue;

    void add(const dispatch_queue_t&, Work work) override { detail::MainQueue::shared().add(std::move(work)); }
    void addAt(std::chrono::nanoseconds time, const dispatch_queue_t&, Work work) override
    {
        detail::MainQueue::shared().addAt(time, std::move(work));
    }
};

class GlobalQueue final : public DispatchQueue {
public:
    GlobalQueue(std::string label, QueuePriority priority)
        : DispatchQueue(std::move(label))
        , priority_(priority)
    {
    }

    void add(const dispatch_queue_t&, Work work) override
    {
        detail::ThreadPool::shared().add(priority_, std::move(work));
    }

private:
    const QueuePriority priority_;
};

class SerialQueue final : public DispatchQueue {
public:
    using DispatchQueue::DispatchQueue;

    void add(const dispatch_queue_t& self, Work work) override
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(work));
        if (!std::exchange(scheduled_, true))
            schedule(self);
    }

private:
    void schedule(const dispatch_queue_t& self)
    {
        detail::ThreadPool::shared().add(QueuePriority::Default, [this, self] { runNext(self); });
    }

    void runNext(const dispatch_queue_t& self)
    {
        std::unique_lock lock(mutex_);
        Work work = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        detail::run(work);
        work = nullptr;
        lock.lock();
        // One piece at a time: a long queue doesn't keep a thread from what is more urgent.
        if (waiting_.empty())
            scheduled_ = false;
        else
            schedule(self);
    }

    std::mutex mutex_;
    std::deque<Work> waiting_;
    bool scheduled_ = false;
};

struct StandingQueues {
    const dispatch_queue_t main = std::make_shared<MainDispatchQueue>("com.apple.main-thread");
    const dispatch_queue_t high
        = std::make_shared<GlobalQueue>("com.apple.root.user-initiated-qos", QueuePriority::High);
    const dispatch_queue_t standard
        = std::make_shared<GlobalQueue>("com.apple.root.default-qos", QueuePriority::Default);
    const dispatch_queue_t low = std::make_shared<GlobalQueue>("com.apple.root.utility-qos", QueuePriority::Low);
    const dispatch_queue_t background
        = std::make_shared<GlobalQueue>("com.apple.root.background-qos", QueuePriority::Background);
};

const StandingQueues& standingQueues()
{
    static const auto* const queues = new StandingQueues;
    return *queues;
}

enum class When { Now, Later };

/// The work, done for the activity that queues it.
Work forPresentActivity(Work work, When when)
{
    const Activity activity = currentActivity();
    if (activity == Activity::None)
        return work;
    return [activity, inHand = when == When::Now ? detail::workInHand(activity) : nullptr, work = std::move(work)] {
        const ActivityScope scope(activity);
        work();
    };
}

enum OnceState : int { NotBegun = 0, Running = 1, Done = 2 };

} // namespace

dispatch_queue_t dispatch_get_main_queue()
{
    return standingQueues().main;
}

dispatch_queue_t dispatch_get_global_queue(QueuePriority priority)
{
    switch (priority) {
    case QueuePriority::High:
        return standingQueues().high;
    case QueuePriority::Default:
        return standingQueues().standard;
    case QueuePriority::Low:
        return standingQueues().low;
    case QueuePriority::Background:
        return standingQueues().background;
    }
    return nullptr;
}

dispatch_queue_t dispatch_queue_create(std::string_view label)
{
    return std::make_shared<SerialQueue>(std::string(label));
}

std::string_view dispatch_queue_get_label(const dispatch_queue_t& queue) noexcept
{
    return queue->label();
}

void dispatch_async(const dispatch_queue_t& queue, Work work)
{
    work = forPresentActivity(std::move(work), When::Now);
    if (clockIsHeld())
        detail::MainQueue::shared().add(std::move(work));
    else
        queue->add(queue, std::move(work));
}

void dispatch_after(std::chrono::nanoseconds delay, const dispatch_queue_t& queue, Work work)
{
    work = forPresentActivity(std::move(work), When::Later);
    const std::chrono::nanoseconds time = detail::timeAfter(clockNow(), delay);
    if (clockIsHeld())
        detail::MainQueue::shared().addAt(time, std::move(work));
    else
        queue->addAt(time, queue, std::move(work));
}

void dispatch_once(dispatch_once_t& token, const Work& work)
{
    if (token.load(std::memory_order_acquire) == Done)
        return;
    int state = NotBegun;
    if (token.compare_exchange_strong(state, Running, std::memory_order_acq_rel, std::memory_order_acquire)) {
        // A call of the caller's, for what the caller works for.
        [&work]() noexcept { work(); }();
        token.store(Done, std::memory_order_release);
        token.notify_all();
        return;
    }
    while (state != Done) {
        token.wait(state, std::memory_order_acquire);
        state = token.load(std::memory_order_acquire);
    }
}

} // namespace platform
