#include "phone/backboard/brightness.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

double screenBrightness(const id&, SEL)
{
    return brightness();
}

void setScreenBrightness(const id&, SEL, double level)
{
    setBrightness("UIScreen", level);
}

id mainScreen(const id& self, SEL)
{
    static NSObject* const screen = send<"new">(self).leak();
    return screen;
}

constexpr MethodDefinition methods[] {
    method<"brightness", &screenBrightness>(),
    classMethod<"mainScreen", &mainScreen>(),
    method<"setBrightness:", &setScreenBrightness>(),
};

} // namespace

extern const ClassDefinition UIScreen_class { .name = "UIScreen", .methods = methods };

} // namespace phone
