#include "phone/backboard/brightness.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

void setBrightnessLevel(const id&, SEL, const id& level)
{
    if (const auto value = asDouble(level))
        setBrightness("SBDisplayBrightnessController", *value);
}

constexpr MethodDefinition methods[] {
    method<"setBrightnessLevel:", &setBrightnessLevel>(),
};

} // namespace

extern const ClassDefinition SBDisplayBrightnessController_class { .name = "SBDisplayBrightnessController",
    .methods = methods };

} // namespace phone
