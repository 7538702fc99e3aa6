#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/application.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

std::vector<WindowObject*>& windowList()
{
    static auto* const windows = new std::vector<WindowObject*>;
    return *windows;
}

WindowObject*& keyWindow()
{
    static WindowObject* window = nullptr;
    return window;
}

bool passScheduled = false;
bool passRunning = false;

} // namespace

WindowObject::WindowObject()
{
    hidden = true;
    windowList().push_back(this);
}

WindowObject::~WindowObject()
{
    std::erase(windowList(), this);
    noteDamage();
    if (keyWindow() == this)
        keyWindow() = nullptr;
}

std::vector<Ref<WindowObject>> allWindows()
{
    std::vector<Ref<WindowObject>> windows(windowList().begin(), windowList().end());
    std::ranges::stable_sort(windows, {}, [](const Ref<WindowObject>& window) { return window->windowLevel; });
    return windows;
}

void layoutAllWindows()
{
    passScheduled = false;
    passRunning = true;
    for (const Ref<WindowObject>& window : allWindows())
        window->layoutTree();
    passRunning = false;
}

void scheduleLayoutPass()
{
    if (std::exchange(passScheduled, true))
        return;
    const auto pass = [] {
        if (passScheduled)
            layoutAllWindows();
    };
    constexpr std::chrono::nanoseconds frame = std::chrono::microseconds { 16'667 };
    if (passRunning)
        dispatch_after(frame, dispatch_get_main_queue(), pass);
    else
        dispatch_async(dispatch_get_main_queue(), pass);
}

namespace {

WindowObject& windowIn(const id& self)
{
    return static_cast<WindowObject&>(*self);
}

id init(const id& self, SEL)
{
    return send<"initWithFrame:">(self, CGRect { {}, screenFacts().size });
}

void setRootViewController(const id& self, SEL, const id& controller)
{
    WindowObject& window = windowIn(self);
    if (ViewObject* const former = asViewObject(askObject<"view">(window.rootViewController)))
        former->removeFromSuperview();
    window.rootViewController = controller;
    const id view = askObject<"view">(controller);
    if (!view)
        return;
    send<"setFrame:", void>(view, window.bounds);
    constexpr NSUInteger flexibleWidthAndHeight = 2 | 16;
    send<"setAutoresizingMask:", void>(view, flexibleWidthAndHeight);
    window.insertSubview(Ref<ViewObject>(asViewObject(view)), 0);
}

id nextResponder(const id&, SEL)
{
    return send<"sharedApplication">(id(classNamed<"UIApplication">()));
}

void makeKeyWindow(const id& self, SEL)
{
    keyWindow() = &windowIn(self);
}

void makeKeyAndVisible(const id& self, SEL)
{
    keyWindow() = &windowIn(self);
    send<"setHidden:", void>(self, false);
}

bool isKeyWindow(const id& self, SEL)
{
    return keyWindow() == &windowIn(self);
}

void setHidden(const id& self, SEL, bool hidden)
{
    if (std::exchange(windowIn(self).hidden, hidden) == hidden)
        return;
    changed(windowIn(self), Asks::Drawing);
    if (!hidden)
        windowIn(self).setNeedsLayout();
}

void sendEvent(const id& self, SEL, const id& event)
{
    deliverTouches(windowIn(self), event);
}

constexpr MethodDefinition methods[] {
    method<"init", &init>(),
    method<"isKeyWindow", &isKeyWindow>(),
    method<"makeKeyAndVisible", &makeKeyAndVisible>(),
    method<"makeKeyWindow", &makeKeyWindow>(),
    method<"nextResponder", &nextResponder>(),
    getter<"rootViewController", &WindowObject::rootViewController>(),
    method<"sendEvent:", &sendEvent>(),
    method<"setHidden:", &setHidden>(),
    method<"setRootViewController:", &setRootViewController>(),
    setterThatAsks<"setWindowLevel:", &WindowObject::windowLevel, Asks::Drawing>(),
    getter<"windowLevel", &WindowObject::windowLevel>(),
};

} // namespace

const ClassDefinition WindowObject::definition {
    .name = "UIWindow", .superclass = &ViewObject::definition, .allocate = allocate<WindowObject>, .methods = methods
};

id currentKeyWindow()
{
    return id(keyWindow());
}

} // namespace platform
