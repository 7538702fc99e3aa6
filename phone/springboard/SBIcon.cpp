#include "phone/springboard/home/home_screen.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

id displayName(const id&, SEL)
{
    return nil;
}

void accessoriesDidUpdate(const id& self, SEL)
{
    refreshIcon(self, IconPart::Accessories);
}

void imageDidUpdate(const id& self, SEL, const id&)
{
    refreshIcon(self, IconPart::Image);
}

constexpr MethodDefinition methods[] {
    method<"_notifyAccessoriesDidUpdate", &accessoriesDidUpdate>(),
    method<"displayName", &displayName>(),
    method<"iconImageDidUpdate:", &imageDidUpdate>(),
};

} // namespace

extern const ClassDefinition SBIcon_class { .name = "SBIcon", .methods = methods };

} // namespace phone
