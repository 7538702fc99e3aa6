#include "phone/springboard/front_display.h"
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

    NSInteger labelAccessoryTypeForIcon(const id&) const { return 0; }
    void didExit(const id&) { applicationDidExit(this); }
};

constexpr MethodDefinition methods[] {
    method<"_didExitWithContext:", &SBApplication::didExit>(),
    getter<"bundleIdentifier", &SBApplication::bundleIdentifier>(),
    getter<"bundlePath", &SBApplication::bundlePath>(),
    getter<"displayName", &SBApplication::displayName>(),
    method<"labelAccessoryTypeForIcon:", &SBApplication::labelAccessoryTypeForIcon>(),
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
