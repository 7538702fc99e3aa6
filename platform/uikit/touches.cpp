#include "platform/uikit/touches.h"

#include "platform/dispatch/clock.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/application.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

Ref<UITouch>& finger()
{
    static auto* const touch = new Ref<UITouch>;
    return *touch;
}

/// Counts taps that follow each other at one place.
NSUInteger tapCountOf(CGPoint point)
{
    constexpr double longestPause = 0.35;
    constexpr double farthest = 40;
    static NSUInteger count = 0;
    static double lastTime = 0;
    static CGPoint last;
    const double now = CACurrentMediaTime();
    const bool follows
        = count > 0 && now - lastTime <= longestPause && std::hypot(point.x - last.x, point.y - last.y) <= farthest;
    count = follows ? count + 1 : 1;
    lastTime = now;
    last = point;
    return count;
}

/// The frontmost window that has something at the point.
void hit(CGPoint point, UITouch& touch)
{
    const auto windows = allWindows();
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        const CGPoint inWindow { point.x - (*window)->frame().origin.x, point.y - (*window)->frame().origin.y };
        if (auto* const view = asView(send<"hitTest:withEvent:">(*window, inWindow, nil))) {
            touch.view = Ref<UIView>(view);
            touch.window = *window;
            return;
        }
    }
}

void sendToView(const UITouch& touch, const id& event)
{
    const id touches = set({ id(const_cast<UITouch*>(&touch)) });
    const id view = touch.view;
    switch (touch.phase) {
    case TouchPhase::Began:
        send<"touchesBegan:withEvent:", void>(view, touches, event);
        break;
    case TouchPhase::Moved:
    case TouchPhase::Stationary:
        send<"touchesMoved:withEvent:", void>(view, touches, event);
        break;
    case TouchPhase::Ended:
        send<"touchesEnded:withEvent:", void>(view, touches, event);
        break;
    case TouchPhase::Cancelled:
        send<"touchesCancelled:withEvent:", void>(view, touches, event);
        break;
    }
}

Ref<UIEvent> makeEvent(UITouch& touch)
{
    Ref<UIEvent> event = make<UIEvent>();
    event->timestamp = touch.timestamp;
    event->touches.emplace_back(&touch);
    return event;
}

} // namespace

void touchScreen(CGPoint point, TouchPhase phase)
{
    if (phase == TouchPhase::Began && finger())
        touchScreen(point, TouchPhase::Cancelled);
    layoutAllWindows();
    if (phase == TouchPhase::Began || !finger()) {
        finger() = make<UITouch>();
        hit(point, *finger());
        finger()->tapCount = tapCountOf(point);
    }
    const Ref<UITouch> touch = finger();
    const CGPoint origin = touch->window ? touch->window->frame().origin : CGPoint {};
    const CGPoint location { point.x - origin.x, point.y - origin.y };
    touch->formerLocation = phase == TouchPhase::Began ? location : touch->location;
    touch->location = location;
    touch->phase = phase;
    touch->timestamp = CACurrentMediaTime();
    if (phase == TouchPhase::Ended || phase == TouchPhase::Cancelled)
        finger() = {};
    const Ref<UIEvent> event = makeEvent(*touch);
    send<"sendEvent:", void>(send<"sharedApplication">(id(classNamed<"UIApplication">())), id(event));
}

void deliverTouches(UIWindow&, const id& event)
{
    const auto* const touches = as<UIEvent>(event);
    if (!touches)
        return;
    for (const Ref<UITouch>& touch : touches->touches) {
        if (touch->phase == TouchPhase::Began)
            beginGestures(*touch);
        letGesturesLook(*touch);
        if (!touch->takenByGesture) {
            touch->isKnownToView = true;
            sendToView(*touch, event);
        }
        if (touch->phase == TouchPhase::Ended || touch->phase == TouchPhase::Cancelled)
            letGesturesRest(*touch);
    }
}

void cancelTouchInView(UITouch& touch)
{
    const TouchPhase phase = std::exchange(touch.phase, TouchPhase::Cancelled);
    sendToView(touch, makeEvent(touch));
    touch.phase = phase;
}

namespace {

CGPoint toView(const id& view, const UITouch& touch, CGPoint location)
{
    const auto* const target = asView(view);
    if (!target)
        return location;
    if (const UIView& root = target->root(); &root != static_cast<const UIView*>(touch.window.get()))
        return location;
    return target->pointFromRoot(location);
}

CGPoint location(const id& self, SEL, const id& view)
{
    const auto& touch = static_cast<const UITouch&>(*self);
    return toView(view, touch, touch.location);
}

CGPoint formerLocation(const id& self, SEL, const id& view)
{
    const auto& touch = static_cast<const UITouch&>(*self);
    return toView(view, touch, touch.formerLocation);
}

constexpr MethodDefinition touchMethods[] {
    method<"locationInView:", &location>(),
    getter<"phase", &UITouch::phase>(),
    method<"previousLocationInView:", &formerLocation>(),
    getter<"tapCount", &UITouch::tapCount>(),
    getter<"timestamp", &UITouch::timestamp>(),
    getter<"view", &UITouch::view>(),
    getter<"window", &UITouch::window>(),
};

id allTouches(const id& self, SEL)
{
    const auto& touches = static_cast<const UIEvent&>(*self).touches;
    return set({ touches.begin(), touches.end() });
}

constexpr MethodDefinition eventMethods[] {
    method<"allTouches", &allTouches>(),
    getter<"timestamp", &UIEvent::timestamp>(),
    getter<"type", &UIEvent::type>(),
};

id nextResponder(const id& self, SEL)
{
    return askObject<"superview">(self);
}

template <Name Selector> void passOn(const id& self, SEL, const id& touches, const id& event)
{
    ask<Selector, void>(askObject<"nextResponder">(self), touches, event);
}

constexpr MethodDefinition responderMethods[] {
    method<"nextResponder", &nextResponder>(),
    method<"touchesBegan:withEvent:", &passOn<"touchesBegan:withEvent:">>(),
    method<"touchesCancelled:withEvent:", &passOn<"touchesCancelled:withEvent:">>(),
    method<"touchesEnded:withEvent:", &passOn<"touchesEnded:withEvent:">>(),
    method<"touchesMoved:withEvent:", &passOn<"touchesMoved:withEvent:">>(),
};

} // namespace

const ClassDefinition UITouch::definition { .name = "UITouch", .allocate = allocate<UITouch>, .methods = touchMethods };
const ClassDefinition UIEvent::definition { .name = "UIEvent", .allocate = allocate<UIEvent>, .methods = eventMethods };
const ClassDefinition UIResponder_class { .name = "UIResponder", .methods = responderMethods };

} // namespace platform
