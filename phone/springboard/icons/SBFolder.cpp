#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"

namespace phone {

using namespace platform;

namespace {

/// What stands together under one icon.
class SBFolder : public NSObject {
public:
    id displayName;
    id icons; ///< array
    Weak<NSObject> icon; ///< its own, which keeps it
};

constexpr MethodDefinition methods[] {
    getter<"displayName", &SBFolder::displayName>(),
    getter<"icon", &SBFolder::icon>(),
    getter<"icons", &SBFolder::icons>(),
    setter<"setDisplayName:", &SBFolder::displayName>(),
    setter<"setIcon:", &SBFolder::icon>(),
    setter<"setIcons:", &SBFolder::icons>(),
};

} // namespace

extern const ClassDefinition SBFolder_class { .name = "SBFolder", .allocate = allocate<SBFolder>, .methods = methods };

} // namespace phone
