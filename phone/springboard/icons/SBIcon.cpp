#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/icon_images.h"
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

void accessoriesDidUpdateByArgument(const id& self, SEL, const id&)
{
    send<"_notifyAccessoriesDidUpdate", void>(self);
}

/// `image` is what the icon looks like now, or nil.
void imageDidUpdate(const id& self, SEL, const id&)
{
    forgetImagesOfIcon(self);
    refreshIcon(self, IconPart::Image);
}

void forgetImages(const id& self, SEL)
{
    forgetImagesOfIcon(self);
}

/// The class of the view that shows the icon's picture.
Class imageViewClass(const id&, SEL, const id&)
{
    return classNamed<"SBIconImageView">();
}

constexpr MethodDefinition methods[] {
    method<"_notifyAccessoriesDidUpdate", &accessoriesDidUpdate>(),
    method<"displayName", &displayName>(),
    method<"iconAccessoriesDidUpdate:", &accessoriesDidUpdateByArgument>(),
    method<"iconImageDidUpdate:", &imageDidUpdate>(),
    method<"iconImageViewClassForLocation:", &imageViewClass>(),
    method<"purgeCachedImages", &forgetImages>().until(12),
    method<"reloadIconImage", &forgetImages>().since(13),
};

} // namespace

extern const ClassDefinition SBIcon_class { .name = "SBIcon", .methods = methods };

} // namespace phone
