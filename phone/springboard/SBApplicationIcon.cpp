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
    id displayName() const { return send<"displayName">(application); }
    bool isVisible() const { return !send<"isHidden", bool>(application); }
    id initWithApplication(const id& newApplication)
    {
        application = newApplication;
        return this;
    }
};

constexpr MethodDefinition methods[] {
    getter<"application", &SBApplicationIcon::application>(),
    method<"applicationBundleID", &SBApplicationIcon::bundleIdentifier>(),
    method<"applicationBundleIdentifier", &SBApplicationIcon::bundleIdentifier>().since(13),
    method<"displayName", &SBApplicationIcon::displayName>(),
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
