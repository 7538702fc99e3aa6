#include "platform/dispatch/activity.h"

#include "platform/dispatch/main_queue.h"

#include <atomic>
#include <map>
#include <mutex>
#include <utility>

namespace platform {

namespace {

thread_local Activity present = Activity::None;

struct Counts {
    std::mutex mutex;
    std::map<Activity, std::size_t> present; ///< pieces of work in hand; none is no entry
};

Counts& counts()
{
    static auto* const shared = new Counts; // threads end after main()
    return *shared;
}

void end(Activity activity)
{
    {
        const std::lock_guard lock(counts().mutex);
        const auto found = counts().present.find(activity);
        if (--found->second > 0)
            return;
        counts().present.erase(found);
    }
    detail::MainQueue::shared().add([] {}); // wakes who waits for this
}

} // namespace

Activity currentActivity() noexcept
{
    return present;
}

Activity newActivity() noexcept
{
    static std::atomic<std::uint64_t> last { 0 };
    return static_cast<Activity>(last.fetch_add(1, std::memory_order_relaxed) + 1);
}

bool isWorkInHand(Activity activity)
{
    const std::lock_guard lock(counts().mutex);
    return counts().present.contains(activity);
}

std::shared_ptr<const void> detail::workInHand(Activity activity)
{
    {
        const std::lock_guard lock(counts().mutex);
        ++counts().present[activity];
    }
    return { nullptr, [activity](const void*) { end(activity); } };
}

ActivityScope::ActivityScope(Activity activity) noexcept
    : previous_(std::exchange(present, activity))
{
}

ActivityScope::~ActivityScope()
{
    present = previous_;
}

} // namespace platform
