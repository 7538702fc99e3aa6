#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// What SpringBoard knows of the media that play.
class SBMediaController : public NSObject {
public:
    bool suppressHUD = false;
};

NSObject* present = nullptr;

id sharedInstance(const id& self, SEL)
{
    if (!present)
        present = send<"new">(self).leak();
    return present;
}

id sharedInstanceIfExists(const id&, SEL)
{
    return present;
}

constexpr MethodDefinition methods[] {
    setter<"setSuppressHUD:", &SBMediaController::suppressHUD>(),
    classMethod<"sharedInstance", &sharedInstance>(),
    classMethod<"sharedInstanceIfExists", &sharedInstanceIfExists>().since(13),
    getter<"suppressHUD", &SBMediaController::suppressHUD>(),
};

} // namespace

extern const ClassDefinition SBMediaController_class {
    .name = "SBMediaController", .allocate = allocate<SBMediaController>, .methods = methods
};

} // namespace phone
