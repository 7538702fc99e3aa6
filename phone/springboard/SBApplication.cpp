#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// An installed application. `processState` is nil while it doesn't run.
class SBApplication : public NSObject {
public:
    id badgeValue; ///< number or nil
    id bundleIdentifier;
    id displayName;
    id bundlePath;
    id info;
    id processState;

    bool isHidden() const { return send<"isHidden", bool>(info); }
};

/// No mark before the name.
NSInteger labelAccessoryType(const id&, SEL, const id&)
{
    return 0;
}

constexpr MethodDefinition methods[] {
    getter<"badgeValue", &SBApplication::badgeValue>(),
    getter<"bundleIdentifier", &SBApplication::bundleIdentifier>(),
    getter<"bundlePath", &SBApplication::bundlePath>(),
    getter<"displayName", &SBApplication::displayName>(),
    getter<"info", &SBApplication::info>(),
    method<"isHidden", &SBApplication::isHidden>(),
    method<"labelAccessoryTypeForIcon:", &labelAccessoryType>(),
    getter<"processState", &SBApplication::processState>(),
    setter<"setBadgeValue:", &SBApplication::badgeValue>(),
    setter<"setBundleIdentifier:", &SBApplication::bundleIdentifier>(),
    setter<"setBundlePath:", &SBApplication::bundlePath>(),
    setter<"setDisplayName:", &SBApplication::displayName>(),
    setter<"setInfo:", &SBApplication::info>(),
    setter<"setProcessState:", &SBApplication::processState>(),
};

} // namespace

extern const ClassDefinition SBApplication_class {
    .name = "SBApplication", .allocate = allocate<SBApplication>, .methods = methods
};

} // namespace phone
