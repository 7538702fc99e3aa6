#include "phone/springboard/icons/icon_images.h"

#include "phone/iconservices/icon_pictures.h"
#include "phone/springboard/icons/icon_list.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// As the older versions number the Home Screen's own.
constexpr int homeScreenFormat = 2;

double screenScale()
{
    return ask<"scale", double>(askObject<"mainScreen">(id(classNamed<"UIScreen">()))).value_or(1);
}

} // namespace

SBIconImageInfo homeScreenImageInfo()
{
    return imageInfo(iconSide);
}

SBIconImageInfo imageInfo(double side)
{
    return { { side, side }, screenScale(), iconCornerRadius / iconSide * side };
}

id imageOfIcon(const id& icon, const SBIconImageInfo& info)
{
    if (const id cache = askObject<"iconImageCache">(iconManager()))
        return send<"_imageForIcon:info:">(cache, icon, info);
    return askObject<"generateIconImage:">(icon, homeScreenFormat);
}

id generatedImageOfIcon(const id& icon, double side)
{
    if (auto image = ask<"generateIconImageWithInfo:">(icon, imageInfo(side)))
        return *image;
    return askObject<"generateIconImage:">(icon, homeScreenFormat);
}

void forgetImagesOfIcon(const id& icon)
{
    ask<"_forgetImagesOfIcon:", void>(askObject<"iconImageCache">(iconManager()), icon);
}

} // namespace phone
