#include "platform/foundation/locale.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/screen/backlight.h"
#include "platform/uikit/application.h"
#include "platform/uikit/device.h"
#include "platform/uikit/views.h"
#include "platform/uikit/window_scene.h"

#include <algorithm>

namespace platform {

namespace {

/// The first application object of the process, of whatever class it is; never freed.
id& theApplication()
{
    static auto* const application = new id;
    return *application;
}

id init(const id& self, SEL)
{
    if (!theApplication())
        theApplication() = self;
    return self;
}

id sharedApplication(const id& self, SEL)
{
    if (!theApplication())
        send<"new">(self);
    return theApplication();
}

id windows(const id&, SEL)
{
    const auto present = allWindows();
    return array({ present.begin(), present.end() });
}

id keyWindow(const id&, SEL)
{
    return currentKeyWindow();
}

id connectedScenes(const id&, SEL)
{
    const id scene = firstWindowScene();
    return set(scene ? std::vector<id> { scene } : std::vector<id>());
}

NSInteger statusBarOrientation(const id&, SEL)
{
    return interfaceOrientation();
}

/// To the window that the touches are in.
void sendEvent(const id&, SEL, const id& event)
{
    if (const id touch = send<"anyObject">(send<"allTouches">(event)))
        send<"sendEvent:", void>(send<"window">(touch), event);
}

/// Without a target to the first in the responder chain that performs the action, from the first responder on, or from
/// the sender where there is none. An action takes nothing, the sender, or the sender and the event.
bool sendAction(const id&, SEL, SEL action, const id& to, const id& from, const id& event)
{
    id target = to;
    for (const id& start : { firstResponder(), from })
        if (!target)
            target = askObject<"targetForAction:withSender:">(start, action, from);
    if (!target || !action)
        return false;
    const auto types = class_getMethodTypes(object_getClass(target), action);
    if (types == methodEncoding<void>)
        sendSelector<void>(target, action);
    else if (types == methodEncoding<void, id, id>)
        sendSelector<void>(target, action, from, event);
    else
        sendSelector<void>(target, action, from);
    return true;
}

/// That of the owner's first language.
NSInteger userInterfaceLayoutDirection(const id&, SEL)
{
    constexpr std::string_view fromRightToLeft[] { "ar", "fa", "he", "ur", "yi" };
    constexpr NSInteger leftToRight = 0;
    constexpr NSInteger rightToLeft = 1;
    if (preferredLanguages().empty())
        return leftToRight;
    const std::string_view language = preferredLanguages().front();
    const std::string_view name = language.substr(0, language.find('-'));
    return std::ranges::find(fromRightToLeft, name) == std::end(fromRightToLeft) ? leftToRight : rightToLeft;
}

constexpr MethodDefinition applicationMethods[] {
    method<"connectedScenes", &connectedScenes>().since(13),
    method<"init", &init>(),
    method<"keyWindow", &keyWindow>(),
    method<"sendAction:to:from:forEvent:", &sendAction>(),
    method<"sendEvent:", &sendEvent>(),
    classMethod<"sharedApplication", &sharedApplication>(),
    method<"statusBarOrientation", &statusBarOrientation>(),
    method<"userInterfaceLayoutDirection", &userInterfaceLayoutDirection>(),
    method<"windows", &windows>(),
};

class ScreenObject : public NSObject {
public:
    CGRect bounds() const { return { {}, screenFacts().size }; }
    double scale() const { return screenFacts().scale; }
    double brightness() const { return backlight().level(); }
    void setBrightness(double level) { backlight().setLevel(level); }
};

id mainScreen(const id& self, SEL)
{
    static NSObject* const screen = send<"new">(self).leak();
    return screen;
}

id screenTraits(const id&, SEL)
{
    return send<"currentTraitCollection">(id(classNamed<"UITraitCollection">()));
}

constexpr MethodDefinition screenMethods[] {
    method<"bounds", &ScreenObject::bounds>(),
    method<"brightness", &ScreenObject::brightness>(),
    classMethod<"mainScreen", &mainScreen>(),
    method<"nativeScale", &ScreenObject::scale>(),
    method<"scale", &ScreenObject::scale>(),
    method<"setBrightness:", &ScreenObject::setBrightness>(),
    method<"traitCollection", &screenTraits>(),
};

} // namespace

const ClassDefinition UIApplication_class {
    .name = "UIApplication", .superclass = &UIResponder_class, .methods = applicationMethods
};
const ClassDefinition UIScreen_class {
    .name = "UIScreen", .allocate = allocate<ScreenObject>, .methods = screenMethods
};

ScreenFacts& screenFacts() noexcept
{
    static ScreenFacts facts;
    return facts;
}

} // namespace platform
