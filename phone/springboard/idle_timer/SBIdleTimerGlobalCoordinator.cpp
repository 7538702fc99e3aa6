#include "phone/springboard/idle_timer/idle_timer.h"
#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

class SBIdleTimerDisableAssertion;

std::vector<const SBIdleTimerDisableAssertion*>& held()
{
    static auto* const assertions = new std::vector<const SBIdleTimerDisableAssertion*>;
    return *assertions;
}

/// Keeps the screen from going dark until it is invalidated or gone.
class SBIdleTimerDisableAssertion : public NSObject {
public:
    SBIdleTimerDisableAssertion() { held().push_back(this); }
    ~SBIdleTimerDisableAssertion() override { invalidate(); }

    void invalidate()
    {
        if (std::erase(held(), this) > 0)
            journal(JournalEvent::IdleTimer, "released", reason);
    }

    std::string reason;
};

constexpr MethodDefinition assertionMethods[] {
    method<"invalidate", &SBIdleTimerDisableAssertion::invalidate>(),
};

} // namespace

extern const ClassDefinition SBIdleTimerDisableAssertion_class { .name = "SBIdleTimerDisableAssertion",
    .allocate = allocate<SBIdleTimerDisableAssertion>,
    .methods = assertionMethods };

namespace {

id acquire(const id&, SEL, const id& reason)
{
    id assertion = send<"new">(id(classNamed<"SBIdleTimerDisableAssertion">()));
    const auto text = asString(reason);
    as<SBIdleTimerDisableAssertion>(assertion)->reason = text ? text->text() : "";
    journal(JournalEvent::IdleTimer, "held", as<SBIdleTimerDisableAssertion>(assertion)->reason);
    return assertion;
}

id sharedInstance(const id& self, SEL)
{
    static NSObject* const coordinator = send<"new">(self).leak();
    return coordinator;
}

constexpr MethodDefinition methods[] {
    method<"acquireIdleTimerDisableAssertionForReason:", &acquire>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBIdleTimerGlobalCoordinator_class { .name = "SBIdleTimerGlobalCoordinator",
    .methods = methods };

std::vector<std::string> idleTimerAssertions()
{
    std::vector<std::string> reasons;
    for (const SBIdleTimerDisableAssertion* const assertion : held())
        reasons.push_back(assertion->reason);
    return reasons;
}

} // namespace phone
