#include "phone/appstoredaemon/orders.h"
#include "phone/system/journal.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id defaultCenter(const id& self, SEL)
{
    static NSObject* const center = send<"new">(self).leak();
    return center;
}

/// The completion gets what was bought.
void performSoftwarePurchases(const id&, SEL, const id& purchases, const id&, const id& completion)
{
    journal(JournalEvent::Ran, "SKUIItemStateCenter _performSoftwarePurchases:withClientContext:completionBlock:");
    installOrdered(purchases);
    callBlock(completion, purchases);
}

void performPurchases(const id&, SEL, const id& purchases, bool, const id&, const id& completion)
{
    journal(JournalEvent::Ran,
        "SKUIItemStateCenter _performPurchases:hasBundlePurchase:withClientContext:completionBlock:");
    installOrdered(purchases);
    callBlock(completion, purchases);
}

constexpr MethodDefinition methods[] {
    method<"_performPurchases:hasBundlePurchase:withClientContext:completionBlock:", &performPurchases>(),
    method<"_performSoftwarePurchases:withClientContext:completionBlock:", &performSoftwarePurchases>(),
    classMethod<"defaultCenter", &defaultCenter>(),
};

} // namespace

extern const ClassDefinition SKUIItemStateCenter_class { .name = "SKUIItemStateCenter", .methods = methods };

} // namespace phone
