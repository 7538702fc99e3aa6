#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// A published bulletin on its way to the screen.
class NCNotificationRequest : public NSObject {
public:
    id bulletin;
    id sectionIdentifier;
};

constexpr MethodDefinition methods[] {
    getter<"bulletin", &NCNotificationRequest::bulletin>(),
    getter<"sectionIdentifier", &NCNotificationRequest::sectionIdentifier>(),
    setter<"setBulletin:", &NCNotificationRequest::bulletin>(),
    setter<"setSectionIdentifier:", &NCNotificationRequest::sectionIdentifier>(),
};

} // namespace

extern const ClassDefinition NCNotificationRequest_class {
    .name = "NCNotificationRequest", .allocate = allocate<NCNotificationRequest>, .methods = methods
};

} // namespace phone
