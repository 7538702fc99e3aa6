#include "platform/uikit/device.h"

#include "platform/darwin/system.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/window.h"

#include <algorithm>

namespace platform {

bool isPad() noexcept
{
    constexpr double leastSide = 700;
    const CGSize size = screenFacts().size;
    return std::min(size.width, size.height) >= leastSide;
}

NSInteger interfaceOrientation() noexcept
{
    constexpr NSInteger upright = 1;
    constexpr NSInteger onItsSide = 3;
    const CGSize size = screenFacts().size;
    return size.width > size.height ? onItsSide : upright;
}

namespace {

id currentDevice(const id& self, SEL)
{
    static NSObject* const device = send<"new">(self).leak();
    return device;
}

NSInteger userInterfaceIdiom(const id&, SEL)
{
    return isPad() ? 1 : 0;
}

id model(const id&, SEL)
{
    return string(isPad() ? "iPad" : "iPhone");
}

id systemName(const id&, SEL)
{
    return string(isPad() && processFacts().version.major >= 13 ? "iPadOS" : "iOS");
}

id systemVersion(const id&, SEL)
{
    return string(processFacts().version.text());
}

NSInteger orientation(const id&, SEL)
{
    return interfaceOrientation();
}

constexpr MethodDefinition methods[] {
    classMethod<"currentDevice", &currentDevice>(),
    method<"localizedModel", &model>(),
    method<"model", &model>(),
    method<"name", &model>(),
    method<"orientation", &orientation>(),
    method<"systemName", &systemName>(),
    method<"systemVersion", &systemVersion>(),
    method<"userInterfaceIdiom", &userInterfaceIdiom>(),
};

} // namespace

const ClassDefinition UIDevice_class { .name = "UIDevice", .methods = methods };

} // namespace platform
