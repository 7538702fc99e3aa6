#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// A process as SpringBoard sees it.
class FBProcess : public NSObject {
public:
    id name;
    id bundleIdentifier;
    int pid = 0;
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifier", &FBProcess::bundleIdentifier>(),
    getter<"name", &FBProcess::name>(),
    getter<"pid", &FBProcess::pid>(),
    setter<"setBundleIdentifier:", &FBProcess::bundleIdentifier>(),
    setter<"setName:", &FBProcess::name>(),
    setter<"setPid:", &FBProcess::pid>(),
};

} // namespace

extern const ClassDefinition FBProcess_class {
    .name = "FBProcess", .allocate = allocate<FBProcess>, .methods = methods
};

} // namespace phone
