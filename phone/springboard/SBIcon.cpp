#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

id displayName(const id&, SEL)
{
    return nil;
}

constexpr MethodDefinition methods[] {
    method<"displayName", &displayName>(),
};

} // namespace

extern const ClassDefinition SBIcon_class { .name = "SBIcon", .methods = methods };

} // namespace phone
