#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// One thing that is bought, an update among them.
class ASDPurchase : public NSObject {
public:
    id bundleID;
};

constexpr MethodDefinition methods[] {
    getter<"bundleID", &ASDPurchase::bundleID>(),
    setter<"setBundleID:", &ASDPurchase::bundleID>(),
};

} // namespace

extern const ClassDefinition ASDPurchase_class {
    .name = "ASDPurchase", .allocate = allocate<ASDPurchase>, .methods = methods
};

} // namespace phone
