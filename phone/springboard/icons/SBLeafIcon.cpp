#include "phone/iconservices/icon_pictures.h"
#include "phone/springboard/icons/icon_images.h"
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

/// What an icon looks like before it is cut to its form: each kind has its own.
id squareImage(const id&, SEL)
{
    return nil;
}

id unmaskedImage(const id& self, SEL, SBIconImageInfo info)
{
    return iconOfPicture(send<"_squareImage">(self), info.size, 0);
}

id generateImage(const id& self, SEL, SBIconImageInfo info)
{
    return iconOfPicture(send<"_squareImage">(self), info.size, info.continuousCornerRadius);
}

id image(const id& self, SEL, SBIconImageInfo info)
{
    return send<"generateIconImageWithInfo:">(self, info);
}

/// As older versions have it, of one size.
id generateImageOfFormat(const id& self, SEL cmd, int)
{
    return generateImage(self, cmd, homeScreenImageInfo());
}

constexpr MethodDefinition methods[] {
    method<"_squareImage", &squareImage>(),
    method<"generateIconImage:", &generateImageOfFormat>().until(12),
    method<"generateIconImageWithInfo:", &generateImage>().since(13),
    method<"iconImageWithInfo:", &image>().since(13),
    method<"isUninstallSupported", &isUninstallSupported>(),
    method<"leafIdentifier", &leafIdentifier>(),
    method<"unmaskedIconImageWithInfo:", &unmaskedImage>().since(13),
};

} // namespace

extern const ClassDefinition SBIcon_class;
extern const ClassDefinition SBLeafIcon_class { .name = "SBLeafIcon", .superclass = &SBIcon_class, .methods = methods };

} // namespace phone
