#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/application.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

std::vector<UIWindow*>& windowList()
{
    static auto* const windows = new std::vector<UIWindow*>;
    return *windows;
}

UIWindow*& keyWindow()
{
    static UIWindow* window = nullptr;
    return window;
}

bool passScheduled = false;
bool passRunning = false;

} // namespace

UIWindow::UIWindow()
{
    hidden = true;
    windowList().push_back(this);
}

UIWindow::~UIWindow()
{
    std::erase(windowList(), this);
    noteDamage();
    if (keyWindow() == this)
        keyWindow() = nullptr;
}

std::vector<Ref<UIWindow>> allWindows()
{
    std::vector<Ref<UIWindow>> windows(windowList().begin(), windowList().end());
    std::ranges::stable_sort(windows, {}, [](const Ref<UIWindow>& window) { return window->windowLevel; });
    return windows;
}

void layoutAllWindows()
{
    passScheduled = false;
    passRunning = true;
    for (const Ref<UIWindow>& window : allWindows())
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

UIWindow& windowIn(const id& self)
{
    return static_cast<UIWindow&>(*self);
}

id init(const id& self, SEL)
{
    return send<"initWithFrame:">(self, CGRect { {}, screenFacts().size });
}

void setRootViewController(const id& self, SEL, const id& controller)
{
    UIWindow& window = windowIn(self);
    if (UIView* const former = asView(askObject<"view">(window.rootViewController)))
        former->removeFromSuperview();
    window.rootViewController = controller;
    const id view = askObject<"view">(controller);
    if (!view)
        return;
    send<"setFrame:", void>(view, window.bounds);
    constexpr NSUInteger flexibleWidthAndHeight = 2 | 16;
    send<"setAutoresizingMask:", void>(view, flexibleWidthAndHeight);
    window.insertSubview(Ref<UIView>(asView(view)), 0);
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
    getter<"rootViewController", &UIWindow::rootViewController>(),
    method<"sendEvent:", &sendEvent>(),
    method<"setHidden:", &setHidden>(),
    method<"setRootViewController:", &setRootViewController>(),
    setterThatAsks<"setWindowLevel:", &UIWindow::windowLevel, Asks::Drawing>(),
    getter<"windowLevel", &UIWindow::windowLevel>(),
};

} // namespace

const ClassDefinition UIWindow::definition {
    .name = "UIWindow", .superclass = &UIView::definition, .allocate = allocate<UIWindow>, .methods = methods
};

id currentKeyWindow()
{
    return id(keyWindow());
}

} // namespace platform
