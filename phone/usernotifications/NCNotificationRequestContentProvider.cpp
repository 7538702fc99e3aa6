#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What a banner or a row of the notification list shows of one request.
class NCNotificationRequestContentProvider : public NSObject {
public:
    id notificationRequest;
    id icons;
};

constexpr MethodDefinition methods[] {
    getter<"icons", &NCNotificationRequestContentProvider::icons>(),
    getter<"notificationRequest", &NCNotificationRequestContentProvider::notificationRequest>(),
    setter<"setIcons:", &NCNotificationRequestContentProvider::icons>(),
    setter<"setNotificationRequest:", &NCNotificationRequestContentProvider::notificationRequest>(),
};

} // namespace

extern const ClassDefinition NCNotificationRequestContentProvider_class { .name
    = "NCNotificationRequestContentProvider",
    .allocate = allocate<NCNotificationRequestContentProvider>,
    .methods = methods };

} // namespace phone
