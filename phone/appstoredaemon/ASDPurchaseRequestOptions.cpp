#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What a request is for. Older versions fix the purchases when they make the options.
class ASDPurchaseRequestOptions : public NSObject {
public:
    id purchases;

    id initWithPurchases(const id& newPurchases)
    {
        purchases = newPurchases;
        return this;
    }
};

constexpr MethodDefinition methods[] {
    method<"initWithPurchases:", &ASDPurchaseRequestOptions::initWithPurchases>(),
    getter<"purchases", &ASDPurchaseRequestOptions::purchases>(),
    setter<"setPurchases:", &ASDPurchaseRequestOptions::purchases>().since(15),
};

constexpr InstanceVariableDefinition variables[] {
    instanceVariable<"_purchases", &ASDPurchaseRequestOptions::purchases>(),
};

} // namespace

extern const ClassDefinition ASDPurchaseRequestOptions_class { .name = "ASDPurchaseRequestOptions",
    .allocate = allocate<ASDPurchaseRequestOptions>,
    .methods = methods,
    .instanceVariables = variables };

} // namespace phone
