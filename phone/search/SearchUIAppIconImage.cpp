#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The numbers of icons' sizes for search results and for the Home Screen's.
constexpr int resultFormat = 1;
constexpr int homeScreenFormat = 2;
constexpr double resultSide = 40;

/// The icon beside a search result, named by its application. `size` is a boxed size, or nil for the usual one.
class SearchUIAppIconImage : public NSObject {
public:
    id bundleIdentifier;
    id size;

    id loadImage(double scale, bool) const
    {
        const bool isUsual = ask<"CGSizeValue", CGSize>(size).value_or(CGSizeZero).width <= resultSide;
        return send<"_applicationIconImageForBundleIdentifier:format:scale:">(
            id(classNamed<"UIImage">()), bundleIdentifier, isUsual ? resultFormat : homeScreenFormat, scale);
    }

    void loadImageThen(double scale, bool isDark, const id& handler) const
    {
        if (handler)
            callBlock(handler, loadImage(scale, isDark));
    }
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifier", &SearchUIAppIconImage::bundleIdentifier>(),
    method<"loadImageWithScale:isDarkStyle:", &SearchUIAppIconImage::loadImage>(),
    method<"loadImageWithScale:isDarkStyle:completionHandler:", &SearchUIAppIconImage::loadImageThen>(),
    setter<"setBundleIdentifier:", &SearchUIAppIconImage::bundleIdentifier>(),
    setter<"setSize:", &SearchUIAppIconImage::size>(),
    getter<"size", &SearchUIAppIconImage::size>(),
};

} // namespace

extern const ClassDefinition SearchUIAppIconImage_class {
    .name = "SearchUIAppIconImage", .allocate = allocate<SearchUIAppIconImage>, .methods = methods
};

} // namespace phone
