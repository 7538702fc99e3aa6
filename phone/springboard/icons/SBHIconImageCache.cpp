#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/icon_image_info.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"

#include <map>

namespace phone {

using namespace platform;

namespace {

/// The pictures that icon views show, of each icon at the widths that were asked for.
class SBHIconImageCache : public NSObject {
public:
    id imageForIcon(const id& icon, SBIconImageInfo info)
    {
        dropThoseGone();
        Images& images = images_[icon.get()];
        images.icon = icon;
        id& image = images.byWidth[info.size.width];
        if (!image)
            image = askObject<"iconImageWithInfo:">(icon, info);
        return image;
    }

    void forgetImagesOfIcon(const id& icon) { images_.erase(icon.get()); }

    /// Once they are thrown away, every view asks for its own again.
    void purgeAllCachedImages()
    {
        images_.clear();
        forEachKnownIconView([](const id& view) { send<"_updateIconImageView", void>(view); });
    }

private:
    struct Images {
        Weak<NSObject> icon {};
        std::map<double, id> byWidth {};
    };

    void dropThoseGone()
    {
        std::erase_if(images_, [](const auto& entry) { return !entry.second.icon.get(); });
    }

    std::map<const NSObject*, Images> images_;
};

constexpr MethodDefinition methods[] {
    method<"_forgetImagesOfIcon:", &SBHIconImageCache::forgetImagesOfIcon>(),
    method<"_imageForIcon:info:", &SBHIconImageCache::imageForIcon>(),
    method<"purgeAllCachedImages", &SBHIconImageCache::purgeAllCachedImages>(),
};

} // namespace

extern const ClassDefinition SBHIconImageCache_class { .name = "SBHIconImageCache",
    .allocate = allocate<SBHIconImageCache>,
    .methods = methods,
    .versions = { .first = 13 } };

} // namespace phone
