#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What asks the server to publish a bulletin. It tells neither section nor sound itself.
class BBBulletinRequest : public NSObject {
public:
    id bulletin;
};

constexpr MethodDefinition methods[] {
    getter<"bulletin", &BBBulletinRequest::bulletin>(),
    setter<"setBulletin:", &BBBulletinRequest::bulletin>(),
};

} // namespace

extern const ClassDefinition BBBulletinRequest_class {
    .name = "BBBulletinRequest", .allocate = allocate<BBBulletinRequest>, .methods = methods
};

} // namespace phone
