#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// An installed application. `processState` is nil while it doesn't run.
class SBApplication : public NSObject {
public:
    id bundleIdentifier;
    id displayName;
    id bundlePath;
    id processState;
};

/// No mark before the name.
NSInteger labelAccessoryType(const id&, SEL, const id&)
{
    return 0;
}

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifier", &SBApplication::bundleIdentifier>(),
    getter<"bundlePath", &SBApplication::bundlePath>(),
    getter<"displayName", &SBApplication::displayName>(),
    method<"labelAccessoryTypeForIcon:", &labelAccessoryType>(),
    getter<"processState", &SBApplication::processState>(),
    setter<"setBundleIdentifier:", &SBApplication::bundleIdentifier>(),
    setter<"setBundlePath:", &SBApplication::bundlePath>(),
    setter<"setDisplayName:", &SBApplication::displayName>(),
    setter<"setProcessState:", &SBApplication::processState>(),
};

} // namespace

extern const ClassDefinition SBApplication_class {
    .name = "SBApplication", .allocate = allocate<SBApplication>, .methods = methods
};

} // namespace phone
