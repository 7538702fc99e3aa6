#include "phone/springboard/icons/icon_images.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The picture inside an icon view.
struct ImageViewFields {
    id icon;
    id contents; ///< as it was asked for last; nil: to be asked for
};

SBIconImageInfo infoOf(const id& self)
{
    SBIconImageInfo info = imageInfo(send<"bounds", CGRect>(self).size.width);
    info.size = send<"bounds", CGRect>(self).size;
    return info;
}

/// What is asked for the picture, with what the icon looks like by itself.
id contentsImage(const id& self, SEL)
{
    ImageViewFields& fields = fieldsOf<ImageViewFields>(self);
    if (!fields.contents && fields.icon)
        fields.contents = imageOfIcon(fields.icon, infoOf(self));
    return fields.contents;
}

id displayedImage(const id& self, SEL)
{
    return send<"contentsImage">(self);
}

void clearCachedImages(const id& self, SEL)
{
    fieldsOf<ImageViewFields>(self).contents = nil;
}

void imageDidUpdate(const id& self, SEL, const id&)
{
    send<"clearCachedImages", void>(self);
    send<"updateImageAnimated:", void>(self, false);
}

void updateImage(const id& self, SEL, bool)
{
    send<"setImage:", void>(self, send<"displayedImage">(self));
}

void setIcon(const id& self, SEL, const id& icon)
{
    fieldsOf<ImageViewFields>(self).icon = icon;
    imageDidUpdate(self, nullptr, nil);
}

constexpr MethodDefinition methods[] {
    method<"clearCachedImages", &clearCachedImages>(),
    method<"contentsImage", &contentsImage>(),
    method<"displayedImage", &displayedImage>(),
    getter<"icon", &ImageViewFields::icon>(),
    method<"iconImageDidUpdate:", &imageDidUpdate>(),
    method<"setIcon:", &setIcon>(),
    method<"updateImageAnimated:", &updateImage>(),
};

} // namespace

extern const ClassDefinition SBIconImageView_class {
    .name = "SBIconImageView", .superclassName = "UIImageView", .methods = methods
};

// Views of icons that show the time: what happens at a minute's and a day's end reaches them as their icons' news.
extern const ClassDefinition SBLiveIconImageView_class { .name = "SBLiveIconImageView",
    .superclass = &SBIconImageView_class };
extern const ClassDefinition SBCalendarApplicationIconImageView_class { .name = "SBCalendarApplicationIconImageView",
    .superclass = &SBLiveIconImageView_class };
extern const ClassDefinition SBClockApplicationIconImageView_class { .name = "SBClockApplicationIconImageView",
    .superclass = &SBLiveIconImageView_class };

} // namespace phone
