#include "phone/springboard/icons/icon_images.h"
#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/scenes/front_display.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// An installed application. `processState` is nil while it doesn't run.
class SBApplication : public NSObject {
public:
    id badgeValue; ///< number, string or nil
    id bundleIdentifier;
    id displayName;
    id bundlePath;
    id info;
    id processState;

    bool isHidden() const { return send<"isHidden", bool>(info); }

    void setBadgeValue(const id& newBadge)
    {
        badgeValue = newBadge;
        const id icon = send<"applicationIconForBundleIdentifier:">(iconModel(), bundleIdentifier);
        ask<"_notifyAccessoriesDidUpdate", void>(icon);
    }

    /// None before the name.
    NSInteger labelAccessoryTypeForIcon(const id&) const { return 0; }
    /// What the system keeps of the application's pictures.
    void purgeCaches() const
    {
        const id icon = send<"applicationIconForBundleIdentifier:">(iconModel(), bundleIdentifier);
        if (icon)
            forgetImagesOfIcon(icon);
    }

    void didExit(const id&) { applicationDidExit(this); }
};

constexpr MethodDefinition methods[] {
    method<"_didExitWithContext:", &SBApplication::didExit>(),
    getter<"badgeNumberOrString", &SBApplication::badgeValue>().until(13),
    getter<"badgeValue", &SBApplication::badgeValue>().since(13),
    getter<"bundleIdentifier", &SBApplication::bundleIdentifier>(),
    getter<"bundlePath", &SBApplication::bundlePath>(),
    getter<"displayName", &SBApplication::displayName>(),
    getter<"info", &SBApplication::info>(),
    method<"isHidden", &SBApplication::isHidden>(),
    method<"labelAccessoryTypeForIcon:", &SBApplication::labelAccessoryTypeForIcon>(),
    getter<"processState", &SBApplication::processState>(),
    method<"purgeCaches", &SBApplication::purgeCaches>(),
    method<"setBadgeNumberOrString:", &SBApplication::setBadgeValue>().until(13),
    method<"setBadgeValue:", &SBApplication::setBadgeValue>().since(13),
    setter<"setBundleIdentifier:", &SBApplication::bundleIdentifier>(),
    setter<"setBundlePath:", &SBApplication::bundlePath>(),
    setter<"setDisplayName:", &SBApplication::displayName>(),
    setter<"setInfo:", &SBApplication::info>(),
    setter<"setProcessState:", &SBApplication::processState>(),
};

} // namespace

extern const ClassDefinition SBApplication_class {
    .name = "SBApplication", .allocate = allocate<SBApplication>, .methods = methods
};

} // namespace phone
