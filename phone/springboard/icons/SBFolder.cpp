#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// What stands together under one icon.
class SBFolder : public NSObject {
public:
    id displayName;
    id icons; ///< array
    NSObject* icon = nullptr; ///< its own, which keeps it

    id iconObject() const { return id(icon); }
    void setIcon(const id& newIcon) { icon = newIcon.get(); }
};

constexpr MethodDefinition methods[] {
    getter<"displayName", &SBFolder::displayName>(),
    method<"icon", &SBFolder::iconObject>(),
    getter<"icons", &SBFolder::icons>(),
    setter<"setDisplayName:", &SBFolder::displayName>(),
    method<"setIcon:", &SBFolder::setIcon>(),
    setter<"setIcons:", &SBFolder::icons>(),
};

} // namespace

extern const ClassDefinition SBFolder_class { .name = "SBFolder", .allocate = allocate<SBFolder>, .methods = methods };

} // namespace phone
