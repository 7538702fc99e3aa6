#pragma once

#include <cstdint>
#include <memory>

/// What a thread works for: a request that a process answers, say. Work that is queued while a thread works for an
/// activity is done for it too, on whatever thread and however late, so that what comes of a request can be told from
/// what happens beside it.

namespace platform {

enum class Activity : std::uint64_t { None = 0 };

/// The calling thread's.
Activity currentActivity() noexcept;

/// One that this process hasn't had yet. Any thread.
Activity newActivity() noexcept;

/// Whether work that was queued for it without a delay has still to be done or to end. The main run loop goes round
/// when the last has ended. Any thread.
bool isWorkInHand(Activity activity);

namespace detail {

/// A piece of work of that activity, in hand as long as somebody holds this.
std::shared_ptr<const void> workInHand(Activity activity);

} // namespace detail

/// The calling thread works for it until the scope ends, then again for what it worked for before.
class ActivityScope {
public:
    explicit ActivityScope(Activity activity) noexcept;
    ~ActivityScope();
    ActivityScope(const ActivityScope&) = delete;
    ActivityScope& operator=(const ActivityScope&) = delete;

private:
    const Activity previous_;
};

} // namespace platform
