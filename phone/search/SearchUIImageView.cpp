#include "platform/foundation/block.h"
#include "platform/foundation/cache.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"

#include <string>

namespace phone {

using namespace platform;

namespace {

/// What shows the picture of a result.
struct ImageViewFields {
    id image; ///< a SearchUIAppIconImage
};

double screenScale()
{
    return send<"scale", double>(send<"mainScreen">(id(classNamed<"UIScreen">())));
}

NSCache& loadedImages()
{
    return static_cast<NSCache&>(*send<"imageCache">(send<"sharedCache">(id(classNamed<"SearchUIImageCache">()))));
}

/// Loads the picture and keeps it; one that is kept is shown at once.
void updateWithImage(const id& self, SEL, const id& image)
{
    fieldsOf<ImageViewFields>(self).image = image;
    const auto identifier = asString(askObject<"bundleIdentifier">(image));
    const std::string key = identifier ? identifier->text() : "";
    if (const id kept = loadedImages().objectForKey(key)) {
        send<"setImage:", void>(self, kept);
        return;
    }
    const Weak<NSObject> view(self);
    const id show = block([view, key](const id& loaded) {
        if (!key.empty())
            loadedImages().setObject(loaded, key);
        ask<"setImage:", void>(view.get(), loaded);
    });
    ask<"loadImageWithScale:isDarkStyle:completionHandler:", void>(image, screenScale(), false, show);
}

constexpr MethodDefinition methods[] {
    getter<"currentImage", &ImageViewFields::image>(),
    method<"updateWithImage:", &updateWithImage>(),
};

} // namespace

extern const ClassDefinition SearchUIImageView_class {
    .name = "SearchUIImageView", .superclassName = "UIImageView", .methods = methods
};

} // namespace phone
