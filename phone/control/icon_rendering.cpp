#include "phone/control/answers.h"
#include "phone/control/icon_surfaces.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "phone/iconservices/application_icons.h"
#include "phone/springboard/icons/icon_image_info.h"
#include "phone/springboard/icons/icon_images.h"
#include "phone/springboard/icons/icon_list.h"
#include "platform/foundation/block.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <cstring>

/// Icons as each of the system's surfaces shows them, and what a process keeps of them.

namespace phone {

using namespace platform;

namespace {

struct Picture {
    id image;
    std::string error; ///< for people, where there is no image
};

struct Wish {
    std::string identifier;
    double size = 60; ///< in points
    double scale = 0; ///< pixels a point; 0: the screen's
};

struct Surface {
    IconSurface surface;
    std::string_view className; ///< where it is missing, the process has no such surface
    Picture (*render)(const Wish& wish);
};

double screenScale()
{
    return ask<"scale", double>(askObject<"mainScreen">(id(classNamed<"UIScreen">()))).value_or(1);
}

double scaleOf(const Wish& wish)
{
    return wish.scale > 0 ? wish.scale : screenScale();
}

Picture shown(const std::optional<id>& image)
{
    if (!image)
        return { nil, "this version of the system has no such surface" };
    return *image ? Picture { *image, {} } : Picture { nil, "it shows no picture" };
}

id iconOf(const Wish& wish)
{
    return send<"leafIconForIdentifier:">(iconModel(), string(wish.identifier));
}

/// By a message to the icon, with what the Home Screen says of the picture that it wants.
template <Name Selector> Picture byInfo(const Wish& wish)
{
    const id icon = iconOf(wish);
    if (!icon)
        return { nil, "no such icon is on the phone" };
    SBIconImageInfo info = imageInfo(wish.size);
    info.scale = scaleOf(wish);
    return shown(ask<Selector>(icon, info));
}

/// By a message to an icon's view of that size.
template <Name Selector> Picture byImageView(const Wish& wish)
{
    const id icon = iconOf(wish);
    if (!icon)
        return { nil, "no such icon is on the phone" };
    if (wish.scale > 0 && wish.scale != screenScale())
        return { nil, "this surface has the screen's scale" };
    const id view = send<"initWithFrame:">(
        send<"alloc">(id(classNamed<"SBIconImageView">())), CGRectMake(0, 0, wish.size, wish.size));
    send<"setIcon:", void>(view, icon);
    return shown(ask<Selector>(view));
}

constexpr int formats[] { 8, 0, 10, 1, 2 }; // by size

std::optional<int> formatOf(double size)
{
    const auto* const found = std::ranges::find(formats, size, sideOfFormat);
    return found == std::end(formats) ? std::nullopt : std::optional(*found);
}

Picture unknownFormat()
{
    std::string sizes;
    for (const int format : formats)
        sizes += (sizes.empty() ? "" : ", ") + std::to_string(static_cast<int>(sideOfFormat(format)));
    return { nil, "this surface has icons of these sizes: " + sizes };
}

Picture byIdentifier(const Wish& wish)
{
    const auto format = formatOf(wish.size);
    if (!format)
        return unknownFormat();
    return shown(send<"_applicationIconImageForBundleIdentifier:format:scale:">(
        id(classNamed<"UIImage">()), string(wish.identifier), *format, scaleOf(wish)));
}

Picture byProxy(const Wish& wish)
{
    const auto format = formatOf(wish.size);
    if (!format)
        return unknownFormat();
    const id proxy
        = askObject<"applicationProxyForIdentifier:">(id(classNamed<"LSApplicationProxy">()), string(wish.identifier));
    return shown(send<"_iconForResourceProxy:variant:options:variantsScale:">(
        id(classNamed<"UIImage">()), proxy, *format, 0, scaleOf(wish)));
}

id searchIcon(const Wish& wish)
{
    id icon = send<"new">(id(classNamed<"SearchUIAppIconImage">()));
    send<"setBundleIdentifier:", void>(icon, string(wish.identifier));
    send<"setSize:", void>(
        icon, send<"valueWithCGSize:">(id(classNamed<"NSValue">()), CGSizeMake(wish.size, wish.size)));
    return icon;
}

Picture bySearch(const Wish& wish)
{
    return shown(send<"loadImageWithScale:isDarkStyle:">(searchIcon(wish), scaleOf(wish), false));
}

Picture bySearchLater(const Wish& wish)
{
    id delivered;
    send<"loadImageWithScale:isDarkStyle:completionHandler:", void>(
        searchIcon(wish), scaleOf(wish), false, block([&delivered](const id& image) { delivered = image; }));
    return shown(delivered);
}

Picture byBanner(const Wish& wish)
{
    if (wish.scale > 0 && wish.scale != screenScale())
        return { nil, "this surface has the screen's scale" };
    const id request = send<"new">(id(classNamed<"NCNotificationRequest">()));
    send<"setSectionIdentifier:", void>(request, string(wish.identifier));
    const id provider = send<"new">(id(classNamed<"NCNotificationRequestContentProvider">()));
    send<"setNotificationRequest:", void>(provider, request);
    const id own = applicationIcon(string(wish.identifier), wish.size, screenScale());
    send<"setIcons:", void>(provider, array(std::vector { own }));
    const id icons = send<"icons">(provider);
    return shown(itemsOf(icons).empty() ? id() : itemsOf(icons)[0]);
}

constexpr Surface surfaces[] {
    { { "home", "SpringBoard", "SBLeafIcon iconImageWithInfo:" }, "SBIconController", byInfo<"iconImageWithInfo:"> },
    { { "home-generated", "SpringBoard", "SBLeafIcon generateIconImageWithInfo:" }, "SBIconController",
        byInfo<"generateIconImageWithInfo:"> },
    { { "home-unmasked", "SpringBoard", "SBLeafIcon unmaskedIconImageWithInfo:" }, "SBIconController",
        byInfo<"unmaskedIconImageWithInfo:"> },
    { { "contents", "SpringBoard", "SBIconImageView contentsImage" }, "SBIconImageView", byImageView<"contentsImage"> },
    { { "displayed", "SpringBoard", "SBIconImageView displayedImage" }, "SBIconImageView",
        byImageView<"displayedImage"> },
    { { "banner", "SpringBoard", "NCNotificationRequestContentProvider icons" }, "NCNotificationRequestContentProvider",
        byBanner },
    { { "image", "SpringBoard", "UIImage _applicationIconImageForBundleIdentifier:format:scale:" }, "UIImage",
        byIdentifier },
    { { "proxy", "SpringBoard", "UIImage _iconForResourceProxy:variant:options:variantsScale:" }, "UIImage", byProxy },
    { { "search", "Spotlight", "SearchUIAppIconImage loadImageWithScale:isDarkStyle:" }, "SearchUIAppIconImage",
        bySearch },
    { { "search-later", "Spotlight", "SearchUIAppIconImage loadImageWithScale:isDarkStyle:completionHandler:" },
        "SearchUIAppIconImage", bySearchLater },
};

const Surface* surfaceNamed(std::string_view name)
{
    const auto* const found
        = std::ranges::find(surfaces, name, [](const Surface& surface) { return surface.surface.name; });
    return found == std::end(surfaces) ? nullptr : found;
}

/// "icon-render": "application" on "surface", "size" points wide at "scale", into the file "path" of the machine that
/// the phone runs on.
Json renderIcon(const Json& request)
{
    const Surface* const surface = surfaceNamed(text(request, "surface"));
    if (!surface)
        return failure("there is no surface called " + text(request, "surface"));
    if (!NSClassFromString(surface->className))
        return failure("this process has no such surface");
    Wish wish { text(request, "application") };
    wish.size = request.value("size", Json()).is_number() ? request["size"].get<double>() : wish.size;
    wish.scale = request.value("scale", Json()).is_number() ? request["scale"].get<double>() : wish.scale;
    const Picture picture = surface->render(wish);
    if (!picture.image)
        return failure(wish.identifier + ": " + picture.error);
    const auto bytes = asData(UIImagePNGRepresentation(picture.image));
    if (!bytes)
        return failure("no picture can have that size");
    const std::string path = text(request, "path");
    if (const int error = writeHostFileAtomically(path, *bytes))
        return failure("can't write " + path + ": " + std::strerror(error));
    const CGSize size = send<"size", CGSize>(picture.image);
    return { { "ok", true }, { "application", wish.identifier }, { "path", path }, { "width", size.width },
        { "height", size.height }, { "scale", send<"scale", double>(picture.image) } };
}

/// "icon-state": what the library keeps in this process for "application".
Json iconState(const Json& request)
{
    const id store = id(classNamed<"ALIconStore">());
    if (!store)
        return failure("it runs without the library");
    const id state = send<"stateForBundleIdentifier:">(store, string(text(request, "application")));
    return { { "ok", true }, { "token", toJson(pairsOf(state)["token"]) },
        { "hasFile", toJson(pairsOf(state)["hasFile"]) }, { "images", toJson(pairsOf(state)["images"]) } };
}

constexpr RequestRow rows[] {
    { "icon-render", renderIcon },
    { "icon-state", iconState },
};

} // namespace

extern const RequestRows iconRenderingRequests { rows };

std::span<const IconSurface> iconSurfaces() noexcept
{
    static const auto* const list = [] {
        auto* const made = new std::vector<IconSurface>;
        for (const Surface& surface : surfaces)
            made->push_back(surface.surface);
        return made;
    }();
    return *list;
}

} // namespace phone
