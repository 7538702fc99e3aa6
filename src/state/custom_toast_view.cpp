#include "state/custom_toast_view.h"

#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <chrono>
#include <ranges>

namespace appledger {

using namespace platform;

namespace {

// Points and seconds.
constexpr CGFloat distanceFromTop = 40;
constexpr CGFloat narrowerThanWindow = 190;
constexpr CGFloat height = 70;
constexpr double slideInTime = 0.3;
constexpr double slideOutTime = 0.2;
constexpr CGFloat extraDistanceOut = 30;
constexpr CGFloat containerInset = 10;
constexpr CGFloat containerRadius = 25;
constexpr CGFloat containerGray = 0.125;
constexpr CGFloat shadowRadius = 10;
constexpr CGSize shadowOffset { 0, 8 };
constexpr float shadowOpacity = 0.18F;
constexpr CGFloat stackSpacing = 2;
constexpr UIEdgeInsets textMargins { .top = 4, .bottom = 4 };
constexpr UIEdgeInsets marginsBesideIcon { .left = 20, .right = 20 };
constexpr CGFloat iconSize = 24;
constexpr CGFloat textSize = 12;

// The system's numbers.
constexpr NSInteger horizontalAxis = 0;
constexpr NSInteger verticalAxis = 1;
constexpr NSInteger alignmentCenter = 3;
constexpr NSInteger textAlignmentCenter = 1;
constexpr NSInteger contentModeAspectFit = 1;

struct ToastFields {
    id titleLabel {};
    id subtitleLabel {};
    id containerView {};
    id hStack {};
    id vStack {};
};

id makeView(Class cls)
{
    id view = send<"new">(id(cls));
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(view, false);
    return view;
}

id color(const char* name)
{
    return sendSelector(id(classNamed<"UIColor">()), sel_registerName(name));
}

void activate(const id& constraint)
{
    send<"setActive:", void>(constraint, true);
}

/// Has the edges of a view keep their distance from those of its superview.
void pinEdges(const id& view, const id& superview, CGFloat inset)
{
    activate(send<"constraintEqualToAnchor:constant:">(send<"topAnchor">(view), send<"topAnchor">(superview), inset));
    activate(
        send<"constraintEqualToAnchor:constant:">(send<"bottomAnchor">(view), send<"bottomAnchor">(superview), -inset));
    activate(send<"constraintEqualToAnchor:constant:">(
        send<"leadingAnchor">(view), send<"leadingAnchor">(superview), inset));
    activate(send<"constraintEqualToAnchor:constant:">(
        send<"trailingAnchor">(view), send<"trailingAnchor">(superview), -inset));
}

void setSize(const id& view, CGFloat width, CGFloat height)
{
    activate(send<"constraintEqualToConstant:">(send<"widthAnchor">(view), width));
    activate(send<"constraintEqualToConstant:">(send<"heightAnchor">(view), height));
}

id makeLabel(const id& text, const char* colorName)
{
    id label = makeView(classNamed<"UILabel">());
    send<"setText:", void>(label, text);
    send<"setTextColor:", void>(label, color(colorName));
    send<"setFont:", void>(label, send<"boldSystemFontOfSize:">(id(classNamed<"UIFont">()), textSize));
    send<"setTextAlignment:", void>(label, textAlignmentCenter);
    return label;
}

id makeStack(NSInteger axis)
{
    id stack = makeView(classNamed<"UIStackView">());
    send<"setAxis:", void>(stack, axis);
    send<"setSpacing:", void>(stack, stackSpacing);
    send<"setAlignment:", void>(stack, alignmentCenter);
    return stack;
}

void setMargins(const id& stack, const UIEdgeInsets& margins)
{
    send<"setLayoutMarginsRelativeArrangement:", void>(stack, true);
    send<"setLayoutMargins:", void>(stack, margins);
}

id makeContainer()
{
    id container = makeView(classNamed<"UIView">());
    send<"setBackgroundColor:", void>(container,
        send<"colorWithRed:green:blue:alpha:">(
            id(classNamed<"UIColor">()), containerGray, containerGray, containerGray, CGFloat { 1 }));
    const id layer = send<"layer">(container);
    send<"setCornerRadius:", void>(layer, containerRadius);
    send<"setShadowColor:", void>(layer, send<"CGColor">(color("blackColor")));
    send<"setShadowOpacity:", void>(layer, shadowOpacity);
    send<"setShadowOffset:", void>(layer, shadowOffset);
    send<"setShadowRadius:", void>(layer, shadowRadius);
    return container;
}

void addIcon(const id& stack, const id& icon)
{
    const id imageView = makeView(classNamed<"UIImageView">());
    send<"setImage:", void>(imageView, icon);
    send<"setContentMode:", void>(imageView, contentModeAspectFit);
    setSize(imageView, iconSize, iconSize);
    send<"addArrangedSubview:", void>(stack, imageView);
    setMargins(stack, marginsBesideIcon);
}

id init(const id& allocated, SEL, const id& title, const id& subtitle, const id& icon, NSInteger autoHide)
{
    id self = sendSuper<"initWithFrame:">(classNamed<"UIView">(), allocated, CGRect {});
    if (!self)
        return nil;
    ToastFields& fields = fieldsOf<ToastFields>(self);
    fields.containerView = makeContainer();
    fields.hStack = makeStack(horizontalAxis);
    fields.vStack = makeStack(verticalAxis);
    fields.titleLabel = makeLabel(title, "whiteColor");
    fields.subtitleLabel = makeLabel(subtitle, "lightGrayColor");

    send<"addSubview:", void>(self, fields.containerView);
    pinEdges(fields.containerView, self, containerInset);
    send<"addSubview:", void>(fields.containerView, fields.hStack);
    pinEdges(fields.hStack, fields.containerView, 0);
    if (icon)
        addIcon(fields.hStack, icon);
    send<"addArrangedSubview:", void>(fields.hStack, fields.vStack);
    setMargins(fields.vStack, textMargins);
    send<"addArrangedSubview:", void>(fields.vStack, fields.titleLabel);
    send<"addArrangedSubview:", void>(fields.vStack, fields.subtitleLabel);
    if (autoHide >= 1)
        send<"hideAfter:", void>(self, static_cast<double>(autoHide));
    return self;
}

/// The topmost window that can be seen; whether the system calls it the key window doesn't count.
id getKeyWindow(const id&, SEL)
{
    const id application = askObject<"sharedApplication">(id(classNamed<"UIApplication">()));
    const id list = askObject<"windows">(application);
    const auto windows = itemsOf(list);
    for (std::size_t i = windows.size(); i-- > 0;)
        if (!send<"isHidden", bool>(windows[i]) && send<"alpha", CGFloat>(windows[i]) > 0)
            return windows[i];
    return nil;
}

CGAffineTransform down(CGFloat distance)
{
    return { .ty = distance };
}

CGFloat heightOf(const id& view)
{
    return send<"bounds", CGRect>(view).size.height;
}

void animate(double duration, const id& animations, const id& completion)
{
    send<"animateWithDuration:animations:completion:", void>(
        id(classNamed<"UIView">()), duration, animations, completion);
}

void presentToast(const id& self, SEL)
{
    const id window = send<"getKeyWindow">(self);
    if (!window)
        return;
    const id shown = send<"subviews">(window);
    for (const id& view : itemsOf(shown))
        if (isKindOfClass(view, customToastViewClass()))
            send<"hideWithAnimation", void>(view);

    send<"addSubview:", void>(window, self);
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(self, false);
    activate(send<"constraintEqualToAnchor:">(send<"centerXAnchor">(self), send<"centerXAnchor">(window)));
    activate(
        send<"constraintEqualToAnchor:constant:">(send<"topAnchor">(self), send<"topAnchor">(window), distanceFromTop));
    setSize(self, send<"bounds", CGRect>(window).size.width - narrowerThanWindow, height);
    send<"layoutIfNeeded", void>(self);
    send<"setTransform:", void>(self, down(-heightOf(self)));
    animate(slideInTime, block([self] { send<"setTransform:", void>(self, CGAffineTransformIdentity); }), nil);
}

void hideWithAnimation(const id& self, SEL)
{
    const CGFloat distance = -extraDistanceOut - heightOf(self);
    animate(slideOutTime, block([self, distance] { send<"setTransform:", void>(self, down(distance)); }),
        block([self](bool isFinished) {
            if (isFinished)
                send<"removeFromSuperview", void>(self);
        }));
}

void hideAfter(const id& self, SEL, double seconds)
{
    dispatch_after(std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::duration<double>(seconds)),
        dispatch_get_main_queue(), [self] { send<"hideWithAnimation", void>(self); });
}

constexpr MethodDefinition methods[] {
    getter<"containerView", &ToastFields::containerView>(),
    method<"getKeyWindow", &getKeyWindow>(),
    getter<"hStack", &ToastFields::hStack>(),
    method<"hideAfter:", &hideAfter>(),
    method<"hideWithAnimation", &hideWithAnimation>(),
    method<"initWithTitle:subtitle:icon:autoHide:", &init>(),
    method<"presentToast", &presentToast>(),
    getter<"subtitleLabel", &ToastFields::subtitleLabel>(),
    getter<"titleLabel", &ToastFields::titleLabel>(),
    getter<"vStack", &ToastFields::vStack>(),
};

} // namespace

const ClassDefinition CustomToastView_class {
    .name = "CustomToastView", .superclassName = "UIView", .methods = methods
};

Class customToastViewClass()
{
    if (const Class present = classNamed<"CustomToastView">())
        return present;
    return registerClass(CustomToastView_class);
}

} // namespace appledger
