#include "phone/iconservices/application_icons.h"

#include "phone/iconservices/icon_pictures.h"
#include "phone/launchservices/installed_applications.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <string>

namespace phone {

using namespace platform;

namespace {

id drawnIcon(std::string_view bundleIdentifier, double side)
{
    const auto installed = installedApplications();
    const auto found = std::ranges::find(installed, bundleIdentifier, &InstalledApplication::bundleIdentifier);
    if (found == installed.end())
        return nil;
    return iconOfPicture(squarePicture(found->bundleIdentifier, found->displayName, found->bundlePath), { side, side },
        iconCornerRadius / iconSide * side);
}

} // namespace

double sideOfFormat(int format)
{
    switch (format) {
    case 0:
        return 29;
    case 1:
        return 40;
    case 8:
        return 20;
    case 10:
        return 38;
    default:
        return iconSide;
    }
}

id applicationIcon(const id& bundleIdentifier, double side, double scale)
{
    const auto identifier = asString(bundleIdentifier);
    if (!identifier)
        return nil;
    const id cache = send<"sharedCache">(id(classNamed<"ISIconCache">()));
    const id key = string(identifier->text() + "_" + std::to_string(side) + "_" + std::to_string(scale));
    if (id kept = askObject<"_imageForKey:">(cache, key))
        return kept;
    id drawn = drawnIcon(*identifier, side);
    if (drawn)
        ask<"_setImage:forKey:", void>(cache, drawn, key);
    return drawn;
}

} // namespace phone
