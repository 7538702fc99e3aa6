#include "phone/springboard/home/home_screen.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The pictures of labels: here labels are drawn as text, so that throwing them away is drawing them anew.
void removeAllImages(const id&, SEL)
{
    forEachKnownIconView([](const id& view) { send<"_updateLabel", void>(view); });
}

constexpr MethodDefinition methods[] { method<"removeAllImages", &removeAllImages>() };

} // namespace

extern const ClassDefinition SBHIconLabelImageCache_class {
    .name = "SBHIconLabelImageCache", .methods = methods, .versions = { .first = 13 }
};

} // namespace phone
