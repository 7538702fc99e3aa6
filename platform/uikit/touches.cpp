#include "platform/uikit/touches.h"

#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/application.h"
#include "platform/uikit/elements.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

Ref<TouchObject>& finger()
{
    static auto* const touch = new Ref<TouchObject>;
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

void hit(CGPoint point, TouchObject& touch)
{
    if (auto* const view = asViewObject(viewOfWindowsAt(point))) {
        touch.view = Ref<ViewObject>(view);
        touch.window = Ref<WindowObject>(view->window());
    }
}

void sendToView(const TouchObject& touch, const id& event)
{
    const id touches = set({ id(const_cast<TouchObject*>(&touch)) });
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

Ref<EventObject> makeEvent(TouchObject& touch)
{
    Ref<EventObject> event = make<EventObject>();
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
        finger() = make<TouchObject>();
        hit(point, *finger());
        finger()->tapCount = tapCountOf(point);
    }
    const Ref<TouchObject> touch = finger();
    const CGPoint origin = touch->window ? touch->window->frame().origin : CGPoint {};
    const CGPoint location { point.x - origin.x, point.y - origin.y };
    touch->formerLocation = phase == TouchPhase::Began ? location : touch->location;
    touch->location = location;
    touch->phase = phase;
    touch->timestamp = CACurrentMediaTime();
    if (phase == TouchPhase::Ended || phase == TouchPhase::Cancelled)
        finger() = {};
    const Ref<EventObject> event = makeEvent(*touch);
    send<"sendEvent:", void>(send<"sharedApplication">(id(classNamed<"UIApplication">())), id(event));
}

namespace {

void tellBeginning(TouchObject& touch)
{
    const TouchPhase phase = std::exchange(touch.phase, TouchPhase::Began);
    touch.isKnownToView = true;
    sendToView(touch, makeEvent(touch));
    touch.phase = phase;
}

/// The touch reaches its view after all, if the one that has held it back agrees.
void letThrough(TouchObject& touch)
{
    const Ref<ViewObject> holder = std::exchange(touch.holder, nullptr);
    if (!holder || touch.takenByGesture)
        return;
    if (ask<"touchesShouldBegin:withEvent:inContentView:", bool>(
            id(holder), set({ id(&touch) }), id(makeEvent(touch)), id(touch.view))
            .value_or(true))
        tellBeginning(touch);
    else
        touch.takenByGesture = true;
}

void begin(TouchObject& touch)
{
    constexpr std::chrono::nanoseconds patience = std::chrono::milliseconds { 150 };
    for (ViewObject* view = touch.view ? touch.view->superview : nullptr; view && !touch.holder; view = view->superview)
        switch (view->contentTouch()) {
        case ContentTouch::Delivered:
            break;
        case ContentTouch::HeldBack:
            touch.holder = Ref<ViewObject>(view);
            dispatch_after(
                patience, dispatch_get_main_queue(), [held = Ref<TouchObject>(&touch)] { letThrough(*held); });
            break;
        case ContentTouch::Swallowed:
            touch.takenByGesture = true;
            return;
        }
    if (!touch.holder)
        tellBeginning(touch);
}

void deliver(TouchObject& touch, const id& event)
{
    if (touch.phase == TouchPhase::Began)
        return begin(touch);
    if (touch.phase == TouchPhase::Ended)
        letThrough(touch);
    if (touch.phase == TouchPhase::Cancelled)
        touch.holder = nullptr;
    if (touch.isKnownToView && !touch.takenByGesture)
        sendToView(touch, event);
}

} // namespace

void deliverTouches(WindowObject&, const id& event)
{
    const auto* const touches = as<EventObject>(event);
    if (!touches)
        return;
    for (const Ref<TouchObject>& touch : touches->touches) {
        if (touch->phase == TouchPhase::Began)
            beginGestures(*touch);
        letGesturesLook(*touch);
        if (!touch->takenByGesture)
            deliver(*touch, event);
        if (touch->phase == TouchPhase::Ended || touch->phase == TouchPhase::Cancelled)
            letGesturesRest(*touch);
    }
}

void cancelTouchInView(TouchObject& touch)
{
    const TouchPhase phase = std::exchange(touch.phase, TouchPhase::Cancelled);
    sendToView(touch, makeEvent(touch));
    touch.phase = phase;
}

namespace {

CGPoint toView(const id& view, const TouchObject& touch, CGPoint location)
{
    const auto* const target = asViewObject(view);
    if (!target)
        return location;
    if (const ViewObject& root = target->root(); &root != static_cast<const ViewObject*>(touch.window.get()))
        return location;
    return target->pointFromRoot(location);
}

CGPoint location(const id& self, SEL, const id& view)
{
    const auto& touch = static_cast<const TouchObject&>(*self);
    return toView(view, touch, touch.location);
}

CGPoint formerLocation(const id& self, SEL, const id& view)
{
    const auto& touch = static_cast<const TouchObject&>(*self);
    return toView(view, touch, touch.formerLocation);
}

constexpr MethodDefinition touchMethods[] {
    method<"locationInView:", &location>(),
    getter<"phase", &TouchObject::phase>(),
    method<"previousLocationInView:", &formerLocation>(),
    getter<"tapCount", &TouchObject::tapCount>(),
    getter<"timestamp", &TouchObject::timestamp>(),
    getter<"view", &TouchObject::view>(),
    getter<"window", &TouchObject::window>(),
};

id allTouches(const id& self, SEL)
{
    const auto& touches = static_cast<const EventObject&>(*self).touches;
    return set({ touches.begin(), touches.end() });
}

constexpr MethodDefinition eventMethods[] {
    method<"allTouches", &allTouches>(),
    getter<"timestamp", &EventObject::timestamp>(),
    getter<"type", &EventObject::type>(),
};

} // namespace

const ClassDefinition TouchObject::definition {
    .name = "UITouch", .allocate = allocate<TouchObject>, .methods = touchMethods
};
const ClassDefinition EventObject::definition {
    .name = "UIEvent", .allocate = allocate<EventObject>, .methods = eventMethods
};

} // namespace platform
