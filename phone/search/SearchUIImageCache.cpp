#include "platform/foundation/cache.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The pictures of results that have been loaded.
class SearchUIImageCache : public NSObject {
public:
    id imageCache() const { return images_; }
    void clearImages(const id&) { images_->removeAllObjects(); }

private:
    const Ref<NSCache> images_ = make<NSCache>();
};

id sharedCache(const id& self, SEL)
{
    static NSObject* const cache = send<"new">(self).leak();
    return cache;
}

constexpr MethodDefinition methods[] {
    method<"clearImagesWithNotification:", &SearchUIImageCache::clearImages>(),
    method<"imageCache", &SearchUIImageCache::imageCache>(),
    classMethod<"sharedCache", &sharedCache>(),
};

} // namespace

extern const ClassDefinition SearchUIImageCache_class {
    .name = "SearchUIImageCache", .allocate = allocate<SearchUIImageCache>, .methods = methods
};

} // namespace phone
