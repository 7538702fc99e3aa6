#include "phone/springboard/home/icon_pictures.h"
#include "phone/system/text.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The icon of an application.
class SBApplicationIcon : public NSObject {
public:
    id application;

    id bundleIdentifier() const { return send<"bundleIdentifier">(application); }
    /// What isn't there but for its data stands behind a cloud.
    id displayName() const
    {
        const id name = send<"displayName">(application);
        return send<"isPlaceholder", bool>(send<"info">(application)) ? string("☁️ " + textOf(name)) : name;
    }

    id homeScreenImage()
    {
        if (!image_)
            image_ = pictureOfApplication(textOf(send<"bundleIdentifier">(application)),
                textOf(send<"displayName">(application)), textOf(send<"bundlePath">(application)));
        return image_;
    }

    bool isVisible() const { return !send<"isHidden", bool>(application); }
    id initWithApplication(const id& newApplication)
    {
        application = newApplication;
        return this;
    }

private:
    id image_; ///< nil until someone looks at it
};

constexpr MethodDefinition methods[] {
    getter<"application", &SBApplicationIcon::application>(),
    method<"applicationBundleID", &SBApplicationIcon::bundleIdentifier>(),
    method<"applicationBundleIdentifier", &SBApplicationIcon::bundleIdentifier>().since(13),
    method<"displayName", &SBApplicationIcon::displayName>(),
    method<"homeScreenImage", &SBApplicationIcon::homeScreenImage>(),
    method<"initWithApplication:", &SBApplicationIcon::initWithApplication>(),
    method<"isVisible", &SBApplicationIcon::isVisible>(),
};

} // namespace

extern const ClassDefinition SBLeafIcon_class;
extern const ClassDefinition SBApplicationIcon_class { .name = "SBApplicationIcon",
    .superclass = &SBLeafIcon_class,
    .allocate = allocate<SBApplicationIcon>,
    .methods = methods };

} // namespace phone
