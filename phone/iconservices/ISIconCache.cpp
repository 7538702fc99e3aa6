#include "phone/launchservices/installation.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/cache.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// What the system keeps of the icons that it has handed out. Any thread.
class ISIconCache : public NSObject {
public:
    ISIconCache() { images_->setCountLimit(500); }

    id imageForKey(const id& key) const { return images_->objectForKey(asString(key)->view()); }
    void setImage(const id& image, const id& key) { images_->setObject(image, asString(key)->view()); }
    void clear() { images_->removeAllObjects(); }

private:
    const Ref<NSCache> images_ = make<NSCache>();
};

id sharedCache(const id& self, SEL)
{
    static NSObject* const cache = [&] {
        // A new version has a picture of its own.
        CFNotificationCenterAddObserver(
            [] { send<"clear", void>(send<"sharedCache">(id(classNamed<"ISIconCache">()))); }, applicationRegistered,
            CFNotificationSuspensionBehavior::DeliverImmediately);
        return send<"new">(self).leak();
    }();
    return cache;
}

constexpr MethodDefinition methods[] {
    method<"_imageForKey:", &ISIconCache::imageForKey>(),
    method<"_setImage:forKey:", &ISIconCache::setImage>(),
    method<"clear", &ISIconCache::clear>(),
    classMethod<"sharedCache", &sharedCache>(),
};

} // namespace

extern const ClassDefinition ISIconCache_class {
    .name = "ISIconCache", .allocate = allocate<ISIconCache>, .methods = methods
};

} // namespace phone
