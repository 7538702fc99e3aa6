#include "platform/uikit/keyboard.h"

#include "platform/dispatch/queue.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/graphics/text.h"
#include "platform/handles/UIView.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/association.h"
#include "platform/runtime/message.h"
#include "platform/uikit/device.h"
#include "platform/uikit/keyboard_view.h"
#include "platform/uikit/traits.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

// Points and seconds.
constexpr double heightOfKeys = 216;
constexpr double heightOnPad = 264;
constexpr double windowLevel = 10'000'000;
constexpr double duration = 0.25;
constexpr NSInteger curve = 7; ///< the keyboard's own, which has no name

/// Moves with what is in it.
class HostViewObject final : public ViewObject {
public:
    static const ClassDefinition definition;
};

const ClassDefinition HostViewObject::definition {
    .name = "UIInputSetHostView", .superclass = &ViewObject::definition, .allocate = allocate<HostViewObject>
};

/// What is on the screen, or on its way. One keyboard for a process.
struct Keyboard {
    Weak<NSObject> responder {}; ///< whom it is for
    UIWindow window {};
    Ref<ViewObject> host {};
    Ref<KeyboardViewObject> keys {};
    CGRect frame {}; ///< on the screen, at its goal; of no size where there is none
    unsigned change = 0; ///< tells the end of an animation whether it is still the present one
};

Keyboard& keyboard()
{
    static auto* const present = new Keyboard;
    return *present;
}

CGRect shownFrame()
{
    const ScreenFacts& facts = screenFacts();
    const double height = (isPad() ? heightOnPad : heightOfKeys) + facts.safeArea.bottom;
    return CGRectMake(0, facts.size.height - height, facts.size.width, height);
}

CGRect below(const CGRect& frame)
{
    return CGRectMake(frame.origin.x, screenFacts().size.height, frame.size.width, frame.size.height);
}

void tell(std::initializer_list<std::string_view> names, const CGRect& from, const CGRect& to)
{
    const auto value = [](const CGRect& rect) { return send<"valueWithCGRect:">(id(classNamed<"NSValue">()), rect); };
    const id userInfo = dictionary({ { "UIKeyboardFrameBeginUserInfoKey", value(from) },
        { "UIKeyboardFrameEndUserInfoKey", value(to) }, { "UIKeyboardAnimationDurationUserInfoKey", real(duration) },
        { "UIKeyboardAnimationCurveUserInfoKey", number(curve) }, { "UIKeyboardIsLocalUserInfoKey", boolean(true) } });
    for (const std::string_view name : names)
        postLocalNotification(name, nil, userInfo);
}

/// The appearance of the view that takes the text, or the one that it asks of a keyboard.
long styleFor(const id& responder)
{
    constexpr NSInteger dark = 1;
    if (ask<"keyboardAppearance", NSInteger>(responder).value_or(0) == dark)
        return static_cast<long>(InterfaceStyle::Dark);
    for (const ViewObject* view = asViewObject(responder); view; view = view->superview)
        if (const long asked = styleAskedBy(*view); asked != 0)
            return asked;
    return 0;
}

void makeWindow()
{
    Keyboard& present = keyboard();
    present.window = UIWindow(send<"initWithFrame:">(
        send<"alloc">(id(classNamed<"UIRemoteKeyboardWindow">())), CGRect { {}, screenFacts().size }));
    present.window.setWindowLevel(windowLevel);
    present.host = make<HostViewObject>();
    present.host->setFrame(below(shownFrame()));
    present.keys = make<KeyboardViewObject>();
    present.host->insertSubview(present.keys, 0);
    present.window.addSubview(UIView(id(present.host)));
    present.window.setHidden(false);
}

void placeKeys()
{
    Keyboard& present = keyboard();
    const CGRect frame = shownFrame();
    place(*present.keys, CGRectMake(0, 0, frame.size.width, frame.size.height - screenFacts().safeArea.bottom));
}

/// Has the host go to its place and calls the function once it is there, unless it has been sent elsewhere.
template <class Function> void moveHost(const CGRect& frame, Function arrived)
{
    Keyboard& present = keyboard();
    const UIView host { id(present.host) };
    UIView::animate(
        duration, [host, frame] { host.setFrame(frame); },
        [change = ++present.change, arrived](bool) {
            if (keyboard().change == change)
                arrived();
        });
}

void come()
{
    Keyboard& present = keyboard();
    const CGRect to = shownFrame();
    const bool isThere = present.frame == to;
    if (!present.window)
        makeWindow();
    present.keys->setUp(present.responder.get());
    present.host->overrideStyle = styleFor(present.responder.get());
    changed(*present.host, Asks::Drawing);
    if (isThere)
        return;
    const CGRect from = present.host->frame();
    UIView::performWithoutAnimation([] { placeKeys(); });
    present.frame = to;
    tell({ "UIKeyboardWillChangeFrameNotification", "UIKeyboardWillShowNotification" }, from, to);
    moveHost(to, [from, to] {
        tell({ "UIKeyboardDidChangeFrameNotification", "UIKeyboardDidShowNotification" }, from, to);
    });
}

void leave()
{
    Keyboard& present = keyboard();
    if (CGRectIsEmpty(present.frame))
        return;
    const CGRect from = std::exchange(present.frame, CGRect {});
    const CGRect to = below(from);
    tell({ "UIKeyboardWillChangeFrameNotification", "UIKeyboardWillHideNotification" }, from, to);
    moveHost(to, [from, to] {
        const UIWindow window = std::exchange(keyboard().window, UIWindow());
        keyboard().host = nullptr;
        keyboard().keys = nullptr;
        window.setHidden(true);
        tell({ "UIKeyboardDidChangeFrameNotification", "UIKeyboardDidHideNotification" }, from, to);
    });
}

/// Goes with the object that it is associated with, which may be the first responder at its end.
class FarewellObject final : public NSObject {
public:
    static const ClassDefinition definition;
    ~FarewellObject() override { dispatch_async(dispatch_get_main_queue(), followFirstResponder); }
};

const ClassDefinition FarewellObject::definition { .name = "_UIKeyboardFarewell" };

void watch(const id& responder)
{
    static const char key = 0;
    if (!objc_getAssociatedObject(responder, &key))
        objc_setAssociatedObject(responder, &key, make<FarewellObject>(), AssociationPolicy::RetainNonatomic);
}

} // namespace

void followFirstResponder()
{
    const id responder = firstResponder();
    const id former = keyboard().responder.get();
    if (!takesText(responder)) {
        keyboard().responder = nullptr;
        return leave();
    }
    if (former == responder && !CGRectIsEmpty(keyboard().frame))
        return;
    keyboard().responder = responder;
    watch(responder);
    come();
}

void keyboardTextChanged()
{
    Keyboard& present = keyboard();
    if (!present.keys || present.responder.get() != firstResponder())
        return;
    const auto type = static_cast<KeyboardType>(ask<"keyboardType", NSInteger>(firstResponder()).value_or(0));
    if (type == present.keys->type())
        present.keys->textChanged();
    else
        present.keys->setUp(firstResponder());
}

double keyboardHeight() noexcept
{
    return keyboard().frame.size.height;
}

void keyboardScreenChanged()
{
    Keyboard& present = keyboard();
    if (!present.window)
        return;
    present.window.setFrame({ {}, screenFacts().size });
    if (CGRectIsEmpty(present.frame))
        return;
    const CGRect from = std::exchange(present.frame, shownFrame());
    const CGRect to = present.frame;
    ++present.change;
    tell({ "UIKeyboardWillChangeFrameNotification" }, from, to);
    place(*present.host, to);
    placeKeys();
    tell({ "UIKeyboardDidChangeFrameNotification" }, from, to);
}

bool enterOnKeyboard(std::string_view text)
{
    if (!takesText(firstResponder()))
        return false;
    while (!text.empty() && takesText(firstResponder())) {
        const std::size_t length = std::max<std::size_t>(caretAfter(text, 0), 1);
        const std::string_view character = text.substr(0, length);
        if (character.front() == '\n' || character.front() == '\r')
            pressReturn();
        else
            enterText(character);
        text.remove_prefix(length);
    }
    return true;
}

bool pressKeyOnKeyboard(std::string_view name)
{
    static constexpr struct {
        std::string_view name;
        void (*press)();
    } keys[] {
        { "delete", eraseText },
        { "dismiss", [] { send<"resignFirstResponder", bool>(firstResponder()); } },
        { "left", [] { ask<"_moveCaret:", void>(firstResponder(), NSInteger { -1 }); } },
        { "return", pressReturn },
        { "right", [] { ask<"_moveCaret:", void>(firstResponder(), NSInteger { 1 }); } },
        { "space", [] { enterText(" "); } },
    };
    if (!takesText(firstResponder()))
        return false;
    for (const auto& key : keys)
        if (key.name == name) {
            key.press();
            return true;
        }
    return false;
}

namespace {

/// Nothing in it but the keyboard takes a finger.
id hitTest(const id& self, SEL, CGPoint point, const id& event)
{
    const id hit = sendSuper<"hitTest:withEvent:">(classNamed<"UIWindow">(), self, point, event);
    return hit == self ? nil : hit;
}

bool no(const id&, SEL)
{
    return false;
}

constexpr MethodDefinition windowMethods[] {
    method<"canBecomeKeyWindow", &no>(),
    method<"hitTest:withEvent:", &hitTest>(),
};

} // namespace

const ClassDefinition UIRemoteKeyboardWindow_class {
    .name = "UIRemoteKeyboardWindow", .superclass = &WindowObject::definition, .methods = windowMethods
};

} // namespace platform
