#include "phone/backboard/brightness.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

void setBrightnessLevel(const id&, SEL, float level, bool showHUD)
{
    setBrightness("SBBrightnessController", level, showHUD ? "with HUD" : "");
}

id sharedBrightnessController(const id& self, SEL)
{
    static NSObject* const controller = send<"new">(self).leak();
    return controller;
}

constexpr MethodDefinition methods[] {
    method<"_setBrightnessLevel:showHUD:", &setBrightnessLevel>(),
    classMethod<"sharedBrightnessController", &sharedBrightnessController>(),
};

} // namespace

extern const ClassDefinition SBBrightnessController_class { .name = "SBBrightnessController", .methods = methods };

} // namespace phone
