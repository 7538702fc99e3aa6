#include "phone/springboard/icons/bookmark_icon.h"

#include "phone/device/web_clips.h"
#include "phone/iconservices/icon_pictures.h"
#include "phone/springboard/icons/icon_image_info.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

id BookmarkIcon::leafIdentifier() const
{
    return string(identifier);
}

id BookmarkIcon::displayName() const
{
    return send<"displayNameForLocation:">(id(const_cast<BookmarkIcon*>(this)), nil);
}

id BookmarkIcon::displayNameForLocation(const id&) const
{
    return string(title);
}

id BookmarkIcon::squareImage() const
{
    return squarePictureOfWebClip(identifier, title, folder);
}

namespace {

// A web clip has its own ways to its picture, which an application's don't pass through.

id unmaskedImage(const id& self, SEL, SBIconImageInfo info)
{
    return iconOfPicture(send<"_squareImage">(self), info.size, 0);
}

id generateImage(const id& self, SEL, SBIconImageInfo info)
{
    return iconOfPicture(send<"_squareImage">(self), info.size, info.continuousCornerRadius);
}

constexpr MethodDefinition methods[] {
    method<"_squareImage", &BookmarkIcon::squareImage>(),
    method<"displayName", &BookmarkIcon::displayName>(),
    method<"displayNameForLocation:", &BookmarkIcon::displayNameForLocation>(),
    method<"generateIconImageWithInfo:", &generateImage>().since(13),
    method<"iconImageWithInfo:", &generateImage>().since(13),
    method<"isUninstallSupported", &BookmarkIcon::isUninstallSupported>(),
    method<"isVisible", &BookmarkIcon::isVisible>(),
    method<"leafIdentifier", &BookmarkIcon::leafIdentifier>(),
    method<"unmaskedIconImageWithInfo:", &unmaskedImage>().since(13),
};

} // namespace

const std::span<const MethodDefinition> bookmarkIconMethods { methods };

std::vector<id> makeBookmarkIcons()
{
    const Class newer = NSClassFromString("SBHBookmarkIcon");
    const id bookmarks(newer ? newer : NSClassFromString("SBBookmarkIcon"));
    std::vector<id> icons;
    for (WebClip& clip : webClips()) {
        id icon = askObject<"new">(bookmarks);
        if (auto* const bookmark = as<BookmarkIcon>(icon)) {
            bookmark->identifier = std::move(clip.identifier);
            bookmark->title = std::move(clip.title);
            bookmark->folder = std::move(clip.folder);
            icons.push_back(std::move(icon));
        }
    }
    return icons;
}

} // namespace phone
