#include "platform/uikit/window_scene.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/application.h"
#include "platform/uikit/device.h"
#include "platform/uikit/views.h"

namespace platform {

id firstWindowScene()
{
    const Class scenes = classNamed<"UIWindowScene">();
    if (!scenes)
        return nil;
    static NSObject* const scene = send<"new">(id(scenes)).leak();
    return scene;
}

namespace {

constexpr NSInteger foregroundActive = 0;

NSInteger activationState(const id&, SEL)
{
    return foregroundActive;
}

NSInteger orientation(const id&, SEL)
{
    return interfaceOrientation();
}

id screen(const id&, SEL)
{
    return send<"mainScreen">(id(classNamed<"UIScreen">()));
}

id traitCollection(const id& self, SEL)
{
    return send<"traitCollection">(screen(self, nullptr));
}

id windows(const id& self, SEL)
{
    std::vector<id> own;
    for (const Ref<WindowObject>& window : allWindows())
        if (window->scene() == self)
            own.emplace_back(window);
    return array(std::move(own));
}

id nextResponder(const id&, SEL)
{
    return send<"sharedApplication">(id(classNamed<"UIApplication">()));
}

constexpr MethodDefinition methods[] {
    method<"activationState", &activationState>(),
    method<"interfaceOrientation", &orientation>(),
    method<"nextResponder", &nextResponder>(),
    method<"screen", &screen>(),
    method<"traitCollection", &traitCollection>(),
    method<"windows", &windows>(),
};

} // namespace

const ClassDefinition UIWindowScene_class {
    .name = "UIWindowScene", .superclass = &UIResponder_class, .methods = methods, .versions = { .first = 13 }
};

} // namespace platform
