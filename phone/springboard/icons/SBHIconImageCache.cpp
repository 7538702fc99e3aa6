#include "phone/springboard/home/home_screen.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The pictures that icon views show: once they are thrown away, every view asks for its own again.
void purgeAllCachedImages(const id&, SEL)
{
    forEachKnownIconView([](const id& view) {
        send<"updateImageAnimated:", void>(send<"iconImageView">(view), false);
        send<"setNeedsLayout", void>(view);
    });
}

constexpr MethodDefinition methods[] {
    method<"purgeAllCachedImages", &purgeAllCachedImages>(),
};

} // namespace

extern const ClassDefinition SBHIconImageCache_class {
    .name = "SBHIconImageCache", .methods = methods, .versions = { .first = 13 }
};

} // namespace phone
