#include "platform/foundation/notification_center.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace platform {

namespace {

struct Registration {
    std::uint64_t number;
    std::string name;
    std::shared_ptr<const LocalObserver> observer;
};

struct Center {
    std::mutex mutex;
    std::uint64_t lastNumber = 0;
    std::vector<Registration> registrations;
};

Center& center()
{
    // Never destroyed: a thread may post while the process ends.
    static auto* const shared = new Center;
    return *shared;
}

bool isRegistered(std::uint64_t number)
{
    const std::lock_guard lock(center().mutex);
    return std::ranges::find(center().registrations, number, &Registration::number) != center().registrations.end();
}

} // namespace

std::uint64_t addLocalObserver(std::string_view name, LocalObserver observer)
{
    auto shared = std::make_shared<const LocalObserver>(std::move(observer));
    const std::lock_guard lock(center().mutex);
    center().registrations.push_back({ ++center().lastNumber, std::string(name), std::move(shared) });
    return center().lastNumber;
}

void removeLocalObserver(std::uint64_t number)
{
    std::shared_ptr<const LocalObserver> removed;
    const std::lock_guard lock(center().mutex);
    auto& registrations = center().registrations;
    const auto found = std::ranges::find(registrations, number, &Registration::number);
    if (found == registrations.end())
        return;
    removed = std::move(found->observer);
    registrations.erase(found);
}

void postLocalNotification(std::string_view name, const id& object)
{
    std::vector<Registration> addressed;
    {
        const std::lock_guard lock(center().mutex);
        std::ranges::copy_if(center().registrations, std::back_inserter(addressed),
            [&](const Registration& registration) { return registration.name == name; });
    }
    for (const Registration& registration : addressed)
        if (isRegistered(registration.number))
            (*registration.observer)(name, object);
}

} // namespace platform
