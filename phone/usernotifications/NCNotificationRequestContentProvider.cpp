#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The number of an icon's size in a banner.
constexpr int bannerFormat = 10;

/// What a banner or a row of the notification list shows of one request.
class NCNotificationRequestContentProvider : public NSObject {
public:
    id notificationRequest;
    id ownIcons; ///< array of images, or nil for the application's icon

    id icons() const
    {
        if (ownIcons)
            return ownIcons;
        const id images(classNamed<"UIImage">());
        const double scale = send<"scale", double>(send<"mainScreen">(id(classNamed<"UIScreen">())));
        return array(std::vector { askObject<"_applicationIconImageForBundleIdentifier:format:scale:">(
            images, send<"sectionIdentifier">(notificationRequest), bannerFormat, scale) });
    }
};

constexpr MethodDefinition methods[] {
    method<"icons", &NCNotificationRequestContentProvider::icons>(),
    getter<"notificationRequest", &NCNotificationRequestContentProvider::notificationRequest>(),
    setter<"setIcons:", &NCNotificationRequestContentProvider::ownIcons>(),
    setter<"setNotificationRequest:", &NCNotificationRequestContentProvider::notificationRequest>(),
};

} // namespace

extern const ClassDefinition NCNotificationRequestContentProvider_class { .name
    = "NCNotificationRequestContentProvider",
    .allocate = allocate<NCNotificationRequestContentProvider>,
    .methods = methods };

} // namespace phone
