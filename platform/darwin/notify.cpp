#include "platform/darwin/notify.h"

#include "platform/darwin/notification_delivery.h"
#include "platform/darwin/text.h"
#include "platform/dispatch/queue.h"

#include <mutex>
#include <utility>

namespace platform {

namespace {

constexpr std::size_t longestName = 1024;

struct Observer {
    DarwinObserver facts;
    detail::PostNumber since;
};

struct NotifyCenter {
    std::mutex mutex;
    std::vector<Observer> observers;
    detail::PostNumber lastNumber = 0;
};

NotifyCenter& center()
{
    static auto* const shared = new NotifyCenter;
    return *shared;
}

void callObservers(std::string_view name, detail::PostNumber number)
{
    std::vector<CFNotificationCallback> callbacks;
    {
        const std::lock_guard lock(center().mutex);
        for (const Observer& observer : center().observers)
            if (observer.facts.name == name && observer.since < number)
                callbacks.push_back(observer.facts.callback);
    }
    for (const CFNotificationCallback callback : callbacks)
        callback();
}

} // namespace

bool detail::isPostableName(std::string_view name) noexcept
{
    return name.size() <= longestName && isText(name);
}

detail::PostNumber detail::nextPostNumber()
{
    const std::lock_guard lock(center().mutex);
    return ++center().lastNumber;
}

void detail::deliverNotification(std::string name, PostNumber number)
{
    dispatch_async(dispatch_get_main_queue(), [name = std::move(name), number] { callObservers(name, number); });
}

void CFNotificationCenterAddObserver(
    CFNotificationCallback callback, std::string_view name, CFNotificationSuspensionBehavior suspensionBehavior)
{
    const std::lock_guard lock(center().mutex);
    center().observers.push_back({ { std::string(name), callback, suspensionBehavior }, center().lastNumber });
}

std::vector<DarwinObserver> darwinObservers()
{
    const std::lock_guard lock(center().mutex);
    std::vector<DarwinObserver> facts;
    for (const Observer& observer : center().observers)
        facts.push_back(observer.facts);
    return facts;
}

void CFNotificationCenterPostNotification(std::string_view name)
{
    if (!detail::isPostableName(name))
        return;
    const detail::PostNumber number = detail::nextPostNumber();
    std::string posted(name);
    if (!detail::postOnBus(posted, number))
        detail::deliverNotification(std::move(posted), number);
}

} // namespace platform
