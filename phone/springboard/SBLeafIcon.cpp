#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id leafIdentifier(const id& self, SEL)
{
    return askObject<"applicationBundleID">(self);
}

constexpr MethodDefinition methods[] {
    method<"leafIdentifier", &leafIdentifier>(),
};

} // namespace

extern const ClassDefinition SBIcon_class;
extern const ClassDefinition SBLeafIcon_class { .name = "SBLeafIcon", .superclass = &SBIcon_class, .methods = methods };

} // namespace phone
