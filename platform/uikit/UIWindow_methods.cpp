#include "platform/darwin/system.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/message.h"
#include "platform/uikit/application.h"
#include "platform/uikit/responders.h"
#include "platform/uikit/view_controllers.h"
#include "platform/uikit/window_scene.h"

#include <algorithm>

namespace platform {

namespace {

/// The window that keys go to, after those that had them before.
std::vector<Weak<WindowObject>>& keyWindows()
{
    static auto* const windows = new std::vector<Weak<WindowObject>>;
    return *windows;
}

Ref<WindowObject> presentKeyWindow()
{
    return keyWindows().empty() ? nullptr : keyWindows().back().get();
}

WindowObject& windowIn(const id& self)
{
    return static_cast<WindowObject&>(*self);
}

void post(std::string_view name, const id& window)
{
    postLocalNotification(name, window);
}

void resign(const Ref<WindowObject>& window)
{
    if (!window)
        return;
    send<"resignKeyWindow", void>(id(window));
    post("UIWindowDidResignKeyNotification", window);
}

void become(const Ref<WindowObject>& window)
{
    keyWindows().emplace_back(window);
    send<"becomeKeyWindow", void>(id(window));
    post("UIWindowDidBecomeKeyNotification", window);
}

void makeKeyWindow(const id& self, SEL)
{
    const Ref<WindowObject> window(&windowIn(self));
    const Ref<WindowObject> former = presentKeyWindow();
    if (former == window || !send<"canBecomeKeyWindow", bool>(self))
        return;
    std::erase_if(keyWindows(), [&](const Weak<WindowObject>& known) {
        const Ref<WindowObject> present = known.get();
        return !present || present == window;
    });
    resign(former);
    become(window);
}

/// The keys go back to the last window that had them and is still there.
void giveUpKeys(const Ref<WindowObject>& window)
{
    if (presentKeyWindow() != window)
        return;
    keyWindows().pop_back();
    resign(window);
    while (!keyWindows().empty()) {
        const Ref<WindowObject> former = presentKeyWindow();
        keyWindows().pop_back();
        if (former && !former->hidden)
            return become(former);
    }
}

template <auto Tell> void tellControllers(const Ref<ViewObject>& view, WindowObject* window)
{
    const id owner = view->controller;
    if (auto* const known = asController(owner))
        (known->*Tell)(window);
    const std::vector<Ref<ViewObject>> present = view->subviews;
    for (const Ref<ViewObject>& subview : present)
        tellControllers<Tell>(subview, window);
}

void setHidden(const id& self, SEL, bool hidden)
{
    const Ref<WindowObject> window(&windowIn(self));
    if (window->hidden == hidden)
        return;
    if (hidden)
        tellControllers<&ViewControllerObject::viewWillMove>(window, nullptr);
    window->hidden = hidden;
    changed(*window, Asks::Drawing);
    if (!hidden)
        tellControllers<&ViewControllerObject::viewWillMove>(window, window.get());
    if (!hidden)
        window->setNeedsLayout();
    tellControllers<&ViewControllerObject::viewDidMove>(window, hidden ? nullptr : window.get());
    post(hidden ? "UIWindowDidBecomeHiddenNotification" : "UIWindowDidBecomeVisibleNotification", self);
    if (!hidden)
        return;
    giveUpKeys(window);
    const id first = firstResponder();
    if (const ViewObject* const view = asViewObject(first); view && view->isDescendantOf(*window))
        forceResignation(first);
}

id init(const id& self, SEL)
{
    return send<"initWithFrame:">(self, CGRect { {}, screenFacts().size });
}

id initWithScene(const id& self, SEL, const id& scene)
{
    id window = send<"initWithFrame:">(self, CGRect { {}, screenFacts().size });
    if (window)
        windowIn(window).setScene(scene);
    return window;
}

id windowScene(const id& self, SEL)
{
    return windowIn(self).scene();
}

void setRootViewController(const id& self, SEL, const id& controller)
{
    WindowObject& window = windowIn(self);
    const id former = std::exchange(window.rootViewController, controller);
    if (former == controller)
        return;
    // What the former root has shown goes with it.
    const std::vector<Ref<ViewObject>> present = window.subviews;
    for (const Ref<ViewObject>& subview : present)
        if (subview->isa() == classNamed<"UITransitionView">())
            send<"removeFromSuperview", void>(id(subview));
    if (ViewObject* const view = asViewObject(askObject<"viewIfLoaded">(former)))
        view->removeFromSuperview();
    const id view = askObject<"view">(controller);
    if (!view)
        return;
    send<"setFrame:", void>(view, window.bounds);
    constexpr NSUInteger flexibleWidthAndHeight = 2 | 16;
    send<"setAutoresizingMask:", void>(view, flexibleWidthAndHeight);
    window.insertSubview(Ref<ViewObject>(asViewObject(view)), 0);
}

void makeKeyAndVisible(const id& self, SEL)
{
    send<"setHidden:", void>(self, false);
    send<"makeKeyWindow", void>(self);
}

bool isKeyWindow(const id& self, SEL)
{
    return presentKeyWindow().get() == &windowIn(self);
}

void sendEvent(const id& self, SEL, const id& event)
{
    deliverTouches(windowIn(self), event);
}

void nothing(const id&, SEL) { }

bool yes(const id&, SEL)
{
    return true;
}

id screen(const id&, SEL)
{
    return send<"mainScreen">(id(classNamed<"UIScreen">()));
}

id nextResponder(const id& self, SEL)
{
    const id scene = windowIn(self).scene();
    return scene ? scene : send<"sharedApplication">(id(classNamed<"UIApplication">()));
}

constexpr int firstWithScenes = 13;

constexpr MethodDefinition methods[] {
    method<"becomeKeyWindow", &nothing>(),
    method<"canBecomeKeyWindow", &yes>(),
    method<"init", &init>(),
    method<"initWithWindowScene:", &initWithScene>().since(firstWithScenes),
    method<"isKeyWindow", &isKeyWindow>(),
    method<"makeKeyAndVisible", &makeKeyAndVisible>(),
    method<"makeKeyWindow", &makeKeyWindow>(),
    method<"nextResponder", &nextResponder>(),
    method<"resignKeyWindow", &nothing>(),
    getter<"rootViewController", &WindowObject::rootViewController>(),
    method<"screen", &screen>(),
    method<"sendEvent:", &sendEvent>(),
    method<"setHidden:", &setHidden>(),
    method<"setRootViewController:", &setRootViewController>(),
    setterThatAsks<"setWindowLevel:", &WindowObject::windowLevel, Asks::Drawing>(),
    method<"setWindowScene:", &WindowObject::setScene>().since(firstWithScenes),
    getter<"windowLevel", &WindowObject::windowLevel>(),
    method<"windowScene", &windowScene>().since(firstWithScenes),
};

} // namespace

const ClassDefinition WindowObject::definition {
    .name = "UIWindow", .superclass = &ViewObject::definition, .allocate = allocate<WindowObject>, .methods = methods
};

id currentKeyWindow()
{
    return presentKeyWindow();
}

/// One that nobody has given a scene stands in the application's first, as those do that were made before there were
/// any.
id WindowObject::scene() const
{
    return scene_ ? *scene_ : firstWindowScene();
}

void WindowObject::setScene(const id& scene)
{
    scene_ = scene;
}

} // namespace platform
