#include "phone/iconservices/icon_pictures.h"
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

    id squareImage() const
    {
        return squarePicture(textOf(send<"bundleIdentifier">(application)), textOf(send<"displayName">(application)),
            textOf(send<"bundlePath">(application)));
    }

    /// Icons that show the time have views of their own.
    Class imageViewClass(const id&) const
    {
        const std::string identifier = textOf(send<"bundleIdentifier">(application));
        if (identifier == "com.apple.mobiletimer")
            return classNamed<"SBClockApplicationIconImageView">();
        if (identifier == "com.apple.mobilecal")
            return classNamed<"SBCalendarApplicationIconImageView">();
        return classNamed<"SBIconImageView">();
    }

    bool isVisible() const { return !send<"isHidden", bool>(application); }
    id initWithApplication(const id& newApplication)
    {
        application = newApplication;
        return this;
    }
};

constexpr MethodDefinition methods[] {
    method<"_squareImage", &SBApplicationIcon::squareImage>(),
    getter<"application", &SBApplicationIcon::application>(),
    method<"applicationBundleID", &SBApplicationIcon::bundleIdentifier>(),
    method<"applicationBundleIdentifier", &SBApplicationIcon::bundleIdentifier>().since(13),
    method<"displayName", &SBApplicationIcon::displayName>(),
    method<"iconImageViewClassForLocation:", &SBApplicationIcon::imageViewClass>(),
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
