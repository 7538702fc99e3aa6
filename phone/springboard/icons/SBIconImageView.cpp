#include "phone/springboard/home/icon_pictures.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The picture inside an icon view.
struct ImageViewFields {
    id icon;
};

/// What is asked for the picture, with what the icon looks like by itself.
id contentsImage(const id& self, SEL)
{
    return askObject<"homeScreenImage">(fieldsOf<ImageViewFields>(self).icon);
}

id displayedImage(const id& self, SEL)
{
    return send<"contentsImage">(self);
}

void updateImage(const id& self, SEL, bool)
{
    send<"setImage:", void>(self, send<"displayedImage">(self));
}

void setIcon(const id& self, SEL, const id& icon)
{
    fieldsOf<ImageViewFields>(self).icon = icon;
    send<"updateImageAnimated:", void>(self, false);
}

constexpr MethodDefinition methods[] {
    method<"contentsImage", &contentsImage>(),
    method<"displayedImage", &displayedImage>(),
    getter<"icon", &ImageViewFields::icon>(),
    method<"setIcon:", &setIcon>(),
    method<"updateImageAnimated:", &updateImage>(),
};

} // namespace

extern const ClassDefinition SBIconImageView_class {
    .name = "SBIconImageView", .superclassName = "UIImageView", .methods = methods
};

} // namespace phone
