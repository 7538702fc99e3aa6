#include "panel/window/panel_window.h"

#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIScreen.h"
#include "platform/handles/UIWindow.h"

#include <algorithm>
#include <array>

namespace appledger {

using namespace platform;

namespace {

constexpr CGFloat panelLevel = UIWindowLevelStatusBar + 100;
constexpr CGFloat keyboardsAbovePanel = 10;
constexpr std::string_view keyboardWillShow = "UIKeyboardWillShowNotification";

id& al_panelWindow()
{
    static auto* const window = new id;
    return *window;
}

Class superclass()
{
    return classNamed<"UIWindow">();
}

id notificationCenter()
{
    return askObject<"defaultCenter">(id(classNamed<"NSNotificationCenter">()));
}

std::vector<id> applicationWindows()
{
    const id list = askObject<"windows">(askObject<"sharedApplication">(id(classNamed<"UIApplication">())));
    const auto windows = itemsOf(list);
    return { windows.begin(), windows.end() };
}

/// One initialiser of the superclass may call the other: the second observes in the first one's place.
id observing(const id& window)
{
    if (!window)
        return nil;
    const id name = string(keyboardWillShow);
    ask<"removeObserver:name:object:", void>(notificationCenter(), window, name, nil);
    ask<"addObserver:selector:name:object:", void>(
        notificationCenter(), window, sel_registerName("elevateKeyboard:"), name, nil);
    return window;
}

id initWithFrame(const id& allocated, SEL, CGRect frame)
{
    return observing(sendSuper<"initWithFrame:">(superclass(), allocated, frame));
}

id initWithWindowScene(const id& allocated, SEL, const id& scene)
{
    return observing(sendSuper<"initWithWindowScene:">(superclass(), allocated, scene));
}

void dealloc(const id& self, SEL)
{
    ask<"removeObserver:", void>(notificationCenter(), self);
    sendSuper<"dealloc", void>(superclass(), self);
}

bool canBecomeKeyWindow(const id&, SEL)
{
    return true;
}

bool belongsToKeyboard(const id& window)
{
    constexpr std::array words { "Keyboard", "Input", "Effects" };
    const std::string_view name = class_getName(window->isa());
    return std::ranges::any_of(words, [name](const char* word) { return name.find(word) != std::string_view::npos; });
}

/// After whoever shows the keyboard has put its windows in place.
void elevateKeyboard(const id& self, SEL, const id&)
{
    dispatch_async(dispatch_get_main_queue(), [self] {
        const CGFloat level = UIWindow(self).windowLevel() + keyboardsAbovePanel;
        for (const id& window : applicationWindows())
            if (belongsToKeyboard(window))
                UIWindow(window).setWindowLevel(level);
    });
}

/// That of the key window of the main screen; nil where there is none, and on systems that have no scenes.
id presentScene()
{
    const id screen = askObject<"mainScreen">(id(classNamed<"UIScreen">()));
    for (const id& window : applicationWindows()) {
        const id scene = askObject<"windowScene">(window);
        if (scene && askObject<"screen">(scene) == screen && UIWindow(window).isKeyWindow())
            return scene;
    }
    return nil;
}

UIWindow makePanelWindow()
{
    const id allocated = send<"alloc">(id(classNamed<"ALPanelWindow">()));
    if (const id scene = presentScene())
        return UIWindow(send<"initWithWindowScene:">(allocated, scene));
    return UIWindow(send<"initWithFrame:">(allocated, UIScreen::mainScreen().bounds()));
}

constexpr MethodDefinition methods[] {
    method<"_canBecomeKeyWindow", &canBecomeKeyWindow>(),
    method<"canBecomeKeyWindow", &canBecomeKeyWindow>(),
    method<"dealloc", &dealloc>(),
    method<"elevateKeyboard:", &elevateKeyboard>(),
    method<"initWithFrame:", &initWithFrame>(),
    method<"initWithWindowScene:", &initWithWindowScene>(),
};

} // namespace

const ClassDefinition ALPanelWindow_class { .name = "ALPanelWindow", .superclassName = "UIWindow", .methods = methods };

void presentInDedicatedWindow(const id& controller)
{
    takeDownPanelWindow();
    const UIWindow window = makePanelWindow();
    al_panelWindow() = window;
    window.setBackgroundColor(UIColor::clear());
    window.setWindowLevel(panelLevel);
    const UIViewController root = UIViewController::create();
    root.view().setBackgroundColor(UIColor::clear());
    window.setRootViewController(root);
    window.makeKeyAndVisible();
    root.present(UIViewController(controller), true);
}

void takeDownPanelWindow()
{
    const UIWindow window(al_panelWindow());
    if (!window)
        return;
    window.setHidden(true);
    window.setRootViewController(nullptr);
    al_panelWindow() = nil;
}

id panelWindow()
{
    return al_panelWindow();
}

} // namespace appledger
