#include "phone/appstoredaemon/orders.h"
#include "phone/system/journal.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id sharedManager(const id& self, SEL)
{
    static NSObject* const manager = send<"new">(self).leak();
    return manager;
}

/// The result of a purchase is what was purchased.
void startPurchase(const id&, SEL, const id& purchase, const id& handler)
{
    journal(JournalEvent::Ran, "ASDPurchaseManager startPurchase:withResultHandler:");
    installOrderedItem(purchase);
    callBlock(handler, purchase, nil);
}

constexpr MethodDefinition methods[] {
    classMethod<"sharedManager", &sharedManager>(),
    method<"startPurchase:withResultHandler:", &startPurchase>(),
};

} // namespace

extern const ClassDefinition ASDPurchaseManager_class { .name = "ASDPurchaseManager", .methods = methods };

} // namespace phone
