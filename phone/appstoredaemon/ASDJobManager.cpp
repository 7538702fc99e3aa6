#include "phone/appstoredaemon/orders.h"
#include "phone/system/journal.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id defaultManager(const id& self, SEL)
{
    static NSObject* const manager = send<"new">(self).leak();
    return manager;
}

void addJobs(const id&, SEL, const id& jobs, const id& completion)
{
    journal(JournalEvent::Ran, "ASDJobManager addJobs:withCompletionBlock:");
    installOrdered(jobs);
    callBlock(completion, true, nil);
}

constexpr MethodDefinition methods[] {
    method<"addJobs:withCompletionBlock:", &addJobs>(),
    classMethod<"defaultManager", &defaultManager>(),
};

} // namespace

extern const ClassDefinition ASDJobManager_class { .name = "ASDJobManager", .methods = methods };

} // namespace phone
