#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id leafIdentifier(const id& self, SEL)
{
    return askObject<"applicationBundleID">(self);
}

/// Whether the icon offers its removal. The system's own applications stay.
bool isUninstallSupported(const id& self, SEL)
{
    const id application = askObject<"application">(self);
    return application && !send<"isSystemApplication", bool>(send<"info">(application));
}

constexpr MethodDefinition methods[] {
    method<"isUninstallSupported", &isUninstallSupported>(),
    method<"leafIdentifier", &leafIdentifier>(),
};

} // namespace

extern const ClassDefinition SBIcon_class;
extern const ClassDefinition SBLeafIcon_class { .name = "SBLeafIcon", .superclass = &SBIcon_class, .methods = methods };

} // namespace phone
