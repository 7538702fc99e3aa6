#include "phone/process/journal.h"
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
    id displayName() const { return send<"displayName">(application); }
    void notifyAccessoriesDidUpdate() const
    {
        const auto identifier = asString(bundleIdentifier());
        journal(JournalEvent::IconAccessory, identifier ? identifier->view() : "");
    }
    id initWithApplication(const id& newApplication)
    {
        application = newApplication;
        return this;
    }
};

constexpr MethodDefinition methods[] {
    method<"_notifyAccessoriesDidUpdate", &SBApplicationIcon::notifyAccessoriesDidUpdate>(),
    getter<"application", &SBApplicationIcon::application>(),
    method<"applicationBundleID", &SBApplicationIcon::bundleIdentifier>(),
    method<"applicationBundleIdentifier", &SBApplicationIcon::bundleIdentifier>().since(13),
    method<"displayName", &SBApplicationIcon::displayName>(),
    method<"initWithApplication:", &SBApplicationIcon::initWithApplication>(),
};

} // namespace

extern const ClassDefinition SBLeafIcon_class;
extern const ClassDefinition SBApplicationIcon_class { .name = "SBApplicationIcon",
    .superclass = &SBLeafIcon_class,
    .allocate = allocate<SBApplicationIcon>,
    .methods = methods };

} // namespace phone
