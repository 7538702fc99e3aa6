#include "phone/springboard/home/home_screen.h"
#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id displayName(const id&, SEL)
{
    return nil;
}

void accessoriesDidUpdate(const id& self, SEL)
{
    const auto identifier = asString(ask<"applicationBundleID">(self));
    journal(JournalEvent::IconAccessory, identifier ? identifier->view() : "folder");
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
