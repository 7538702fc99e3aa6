#include "phone/appstoredaemon/orders.h"
#include "phone/system/journal.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// Several purchases that are made at once.
class ASDPurchaseRequest : public NSObject {
public:
    id options;

    id initWithOptions(const id& newOptions)
    {
        journal(JournalEvent::Ran, "ASDPurchaseRequest initWithOptions:");
        options = newOptions;
        return this;
    }

    void start(const id& completion) const
    {
        installOrdered(askObject<"purchases">(options));
        callBlock(completion, true, nil);
    }
};

constexpr MethodDefinition methods[] {
    method<"initWithOptions:", &ASDPurchaseRequest::initWithOptions>(),
    getter<"options", &ASDPurchaseRequest::options>(),
    method<"startWithCompletionBlock:", &ASDPurchaseRequest::start>(),
};

} // namespace

extern const ClassDefinition ASDPurchaseRequest_class {
    .name = "ASDPurchaseRequest", .allocate = allocate<ASDPurchaseRequest>, .methods = methods
};

} // namespace phone
