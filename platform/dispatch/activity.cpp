#include "platform/dispatch/activity.h"

#include <atomic>
#include <utility>

namespace platform {

namespace {

thread_local Activity present = Activity::None;

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

ActivityScope::ActivityScope(Activity activity) noexcept
    : previous_(std::exchange(present, activity))
{
}

ActivityScope::~ActivityScope()
{
    present = previous_;
}

} // namespace platform
