#include "platform/foundation/notification_center.h"

#include "platform/foundation/value_objects.h"
#include "platform/foundation/values.h"
#include "platform/runtime/association.h"
#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace platform {

namespace {

using Told = std::function<void(std::string_view name, const id& object, const id& userInfo)>;

struct Registration {
    std::uint64_t number;
    std::optional<std::string> name; ///< none: any
    std::shared_ptr<const Told> observer;
    const NSObject* target = nullptr; ///< of an observer that is told by message; never looked into
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

/// Takes out what `isMeant` says. The observers go when the lock has been given back: what they hold may have a word to
/// say to the center.
template <class Predicate> void removeRegistrations(const Predicate& isMeant)
{
    std::vector<Registration> removed;
    const std::lock_guard lock(center().mutex);
    auto& registrations = center().registrations;
    const auto first = std::ranges::stable_partition(registrations, std::not_fn(isMeant)).begin();
    removed.assign(std::make_move_iterator(first), std::make_move_iterator(registrations.end()));
    registrations.erase(first, registrations.end());
}

std::uint64_t add(Registration registration)
{
    const std::lock_guard lock(center().mutex);
    registration.number = ++center().lastNumber;
    center().registrations.push_back(std::move(registration));
    return center().lastNumber;
}

/// Goes with the object that it is associated with, and takes its observations along.
class ObservationsOf final : public NSObject {
public:
    static const ClassDefinition definition;
    explicit ObservationsOf(const NSObject* target)
        : target_(target)
    {
    }
    ~ObservationsOf() override
    {
        removeRegistrations([this](const Registration& known) { return known.target == target_; });
    }

private:
    const NSObject* const target_;
};

const ClassDefinition ObservationsOf::definition { .name = "NSNotificationCenterObservations" };

/// What tells an object by message; as long as it is there.
Told teller(const id& target, SEL selector, const id& onlyOf)
{
    const bool takesNotification = sel_getName(selector).ends_with(':');
    return [target = Weak<NSObject>(target), selector, takesNotification, sender = onlyOf.get()](
               std::string_view name, const id& object, const id& userInfo) {
        const id observer = target.get();
        if (!observer || (sender && sender != object.get()))
            return;
        if (takesNotification)
            sendSelector<void>(observer, selector, notification(name, object, userInfo));
        else
            sendSelector<void>(observer, selector);
    };
}

std::optional<std::string> nameIn(const id& text)
{
    const auto name = asString(text);
    return name ? std::optional(name->text()) : std::nullopt;
}

void addObserver(const id&, SEL, const id& target, SEL selector, const id& name, const id& object)
{
    if (!target || !selector)
        return;
    static const char key = 0;
    if (!objc_getAssociatedObject(target, &key))
        objc_setAssociatedObject(target, &key, make<ObservationsOf>(target.get()), AssociationPolicy::RetainNonatomic);
    add({ 0, nameIn(name), std::make_shared<const Told>(teller(target, selector, object)), target.get() });
}

void removeObserver(const id&, SEL, const id& target)
{
    removeRegistrations([&](const Registration& known) { return target && known.target == target.get(); });
}

void removeObserverNamed(const id&, SEL, const id& target, const id& name, const id&)
{
    const auto text = nameIn(name);
    removeRegistrations([&](const Registration& known) {
        return target && known.target == target.get() && (!text || known.name == text);
    });
}

void postNotificationWithInfo(const id&, SEL, const id& name, const id& object, const id& userInfo)
{
    if (const auto text = asString(name))
        postLocalNotification(*text, object, userInfo);
}

void postNotification(const id& self, SEL cmd, const id& name, const id& object)
{
    postNotificationWithInfo(self, cmd, name, object, nil);
}

id defaultCenter(const id& self, SEL)
{
    static NSObject* const shared = send<"new">(self).leak();
    return shared;
}

constexpr MethodDefinition methods[] {
    method<"addObserver:selector:name:object:", &addObserver>(),
    classMethod<"defaultCenter", &defaultCenter>(),
    method<"postNotificationName:object:", &postNotification>(),
    method<"postNotificationName:object:userInfo:", &postNotificationWithInfo>(),
    method<"removeObserver:", &removeObserver>(),
    method<"removeObserver:name:object:", &removeObserverNamed>(),
};

} // namespace

const ClassDefinition detail::NSNotificationCenter_class { .name = "NSNotificationCenter", .methods = methods };

std::uint64_t addLocalObserver(std::string_view name, LocalObserver observer)
{
    return add({ 0, std::string(name),
        std::make_shared<const Told>([observer = std::move(observer)](std::string_view told, const id& object,
                                         const id&) { observer(told, object); }) });
}

void removeLocalObserver(std::uint64_t number)
{
    removeRegistrations([number](const Registration& known) { return known.number == number; });
}

void postLocalNotification(std::string_view name, const id& object, const id& userInfo)
{
    std::vector<Registration> addressed;
    {
        const std::lock_guard lock(center().mutex);
        std::ranges::copy_if(center().registrations, std::back_inserter(addressed),
            [&](const Registration& registration) { return !registration.name || *registration.name == name; });
    }
    for (const Registration& registration : addressed)
        if (isRegistered(registration.number))
            (*registration.observer)(name, object, userInfo);
}

} // namespace platform
