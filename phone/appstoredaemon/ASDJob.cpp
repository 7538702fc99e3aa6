#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// One download in the queue of the store's daemon.
class ASDJob : public NSObject {
public:
    id bundleIdentifier;
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifier", &ASDJob::bundleIdentifier>(),
    setter<"setBundleIdentifier:", &ASDJob::bundleIdentifier>(),
};

} // namespace

extern const ClassDefinition ASDJob_class { .name = "ASDJob", .allocate = allocate<ASDJob>, .methods = methods };

} // namespace phone
