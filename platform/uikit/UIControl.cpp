#include "platform/uikit/control.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace platform {

namespace {

/// Points that a finger may stray from a control that it has touched and still be inside it.
constexpr double stray = 70;

bool isInside(const ControlObject& control, const id& touch, double margin)
{
    const CGPoint point = send<"locationInView:", CGPoint>(touch, id(const_cast<ControlObject*>(&control)));
    return CGRectContainsPoint(CGRectInset(control.bounds, -margin, -margin), point);
}

id touchOf(const id& touches)
{
    return send<"anyObject">(touches);
}

} // namespace

void ControlObject::setState(ControlState bit, bool on)
{
    const NSUInteger wanted = on ? state_ | bit : state_ & ~static_cast<NSUInteger>(bit);
    if (std::exchange(state_, wanted) == wanted)
        return;
    changed(*this, Asks::Drawing);
    stateChanged();
}

void ControlObject::setEnabled(bool enabled)
{
    const Ref<ControlObject> self(this);
    setState(Disabled, !enabled);
    if (!enabled && tracking_)
        letGo(nil);
}

void ControlObject::addTarget(const id& target, SEL action, NSUInteger events)
{
    if (!action)
        return;
    const auto present = std::ranges::find_if(
        registrations_, [&](const Registration& registration) { return registration.isOf(target, action); });
    if (present == registrations_.end())
        registrations_.push_back({ static_cast<bool>(target), Weak<NSObject>(target), action, events });
    else
        present->events |= events;
}

void ControlObject::removeTarget(const id& target, SEL action, NSUInteger events)
{
    for (Registration& registration : registrations_)
        if ((!target || registration.target.get() == target) && (!action || registration.action == action))
            registration.events &= ~events;
    std::erase_if(registrations_, [](const Registration& registration) { return registration.events == 0; });
}

id ControlObject::allTargets() const
{
    std::vector<id> targets;
    for (const Registration& registration : registrations_)
        if (id target = registration.target.get())
            targets.push_back(std::move(target));
    return set(std::move(targets));
}

NSUInteger ControlObject::allControlEvents() const
{
    NSUInteger events = 0;
    for (const Registration& registration : registrations_)
        events |= registration.events;
    return events;
}

id ControlObject::actionsForTarget(const id& target, NSUInteger event) const
{
    std::vector<id> actions;
    for (const Registration& registration : registrations_)
        if ((registration.events & event) != 0 && registration.hasTarget == static_cast<bool>(target)
            && registration.target.get() == target)
            actions.push_back(string(sel_getName(registration.action)));
    return actions.empty() ? nil : array(std::move(actions));
}

void ControlObject::sendActions(NSUInteger events, const id& event)
{
    const id self(this);
    const auto present = registrations_; // an action may change them
    for (const Registration& registration : present) {
        if ((registration.events & events) == 0)
            continue;
        const id target = registration.target.get();
        if (target || !registration.hasTarget)
            send<"sendAction:to:forEvent:", void>(self, registration.action, target, event);
    }
}

void ControlObject::letGo(const id& event)
{
    tracking_ = touchInside_ = false;
    setHighlighted(false);
    send<"cancelTrackingWithEvent:", void>(id(this), event);
    sendActions(TouchCancel, event);
}

void ControlObject::touchesBegan(const id& touches, const id& event)
{
    const Ref<ControlObject> self(this); // an action may take it away
    const id touch = touchOf(touches);
    if (!isEnabled() || tracking_ || !touch)
        return;
    touchInside_ = true;
    tracking_ = send<"beginTrackingWithTouch:withEvent:", bool>(self, touch, event);
    send<"setHighlighted:", void>(self, true);
    if (tracking_)
        sendActions(send<"tapCount", NSUInteger>(touch) > 1 ? TouchDown | TouchDownRepeat : TouchDown, event);
}

void ControlObject::touchesMoved(const id& touches, const id& event)
{
    const Ref<ControlObject> self(this);
    const id touch = touchOf(touches);
    if (!tracking_ || !touch)
        return;
    const bool inside = isInside(*this, touch, stray);
    const bool wasInside = std::exchange(touchInside_, inside);
    send<"setHighlighted:", void>(self, inside);
    tracking_ = send<"continueTrackingWithTouch:withEvent:", bool>(self, touch, event);
    if (!tracking_) {
        send<"setHighlighted:", void>(self, false);
        return;
    }
    NSUInteger events = inside ? TouchDragInside : TouchDragOutside;
    if (inside != wasInside)
        events |= inside ? TouchDragEnter : TouchDragExit;
    sendActions(events, event);
}

void ControlObject::touchesEnded(const id& touches, const id& event)
{
    const Ref<ControlObject> self(this);
    const id touch = touchOf(touches);
    const bool wasTracking = std::exchange(tracking_, false);
    touchInside_ = touch && isInside(*this, touch, stray);
    send<"setHighlighted:", void>(self, false);
    if (!wasTracking || !touch)
        return;
    send<"endTrackingWithTouch:withEvent:", void>(self, touch, event);
    const NSUInteger events = touchInside_ ? TouchUpInside | eventsOfTap() : NSUInteger { TouchUpOutside };
    touchInside_ = false;
    sendActions(events, event);
}

void ControlObject::touchesCancelled(const id&, const id& event)
{
    const Ref<ControlObject> self(this);
    if (tracking_)
        letGo(event);
    else
        setHighlighted(false);
}

bool ControlObject::gestureShouldBegin(const id& gesture) const
{
    const bool isBehind = send<"view">(gesture) != id(const_cast<ControlObject*>(this));
    return !isEnabled() || !isBehind || !isKindOfClass(gesture, classNamed<"UITapGestureRecognizer">())
        || send<"numberOfTapsRequired", NSUInteger>(gesture) > 1;
}

namespace {

void sendActionTo(const id& self, SEL, SEL action, const id& target, const id& event)
{
    send<"sendAction:to:from:forEvent:", bool>(
        send<"sharedApplication">(id(classNamed<"UIApplication">())), action, target, self, event);
}

bool goOn(const id&, SEL, const id&, const id&)
{
    return true;
}

void endTracking(const id&, SEL, const id&, const id&) { }

void cancelTracking(const id&, SEL, const id&) { }

constexpr MethodDefinition methods[] {
    method<"actionsForTarget:forControlEvent:", &ControlObject::actionsForTarget>(),
    method<"addTarget:action:forControlEvents:", &ControlObject::addTarget>(),
    method<"allControlEvents", &ControlObject::allControlEvents>(),
    method<"allTargets", &ControlObject::allTargets>(),
    method<"beginTrackingWithTouch:withEvent:", &goOn>(),
    method<"cancelTrackingWithEvent:", &cancelTracking>(),
    method<"continueTrackingWithTouch:withEvent:", &goOn>(),
    method<"endTrackingWithTouch:withEvent:", &endTracking>(),
    method<"gestureRecognizerShouldBegin:", &ControlObject::gestureShouldBegin>(),
    method<"isEnabled", &ControlObject::isEnabled>(),
    method<"isHighlighted", &ControlObject::isHighlighted>(),
    method<"isSelected", &ControlObject::isSelected>(),
    method<"isTouchInside", &ControlObject::isTouchInside>(),
    method<"isTracking", &ControlObject::isTracking>(),
    method<"removeTarget:action:forControlEvents:", &ControlObject::removeTarget>(),
    method<"sendAction:to:forEvent:", &sendActionTo>(),
    method<"sendActionsForControlEvents:",
        static_cast<void (ControlObject::*)(NSUInteger)>(&ControlObject::sendActions)>(),
    method<"setEnabled:", &ControlObject::setEnabled>(),
    method<"setHighlighted:", &ControlObject::setHighlighted>(),
    method<"setSelected:", &ControlObject::setSelected>(),
    method<"state", &ControlObject::state>(),
    method<"touchesBegan:withEvent:", &ControlObject::touchesBegan>(),
    method<"touchesCancelled:withEvent:", &ControlObject::touchesCancelled>(),
    method<"touchesEnded:withEvent:", &ControlObject::touchesEnded>(),
    method<"touchesMoved:withEvent:", &ControlObject::touchesMoved>(),
};

} // namespace

const ClassDefinition ControlObject::definition {
    .name = "UIControl", .superclass = &ViewObject::definition, .allocate = allocate<ControlObject>, .methods = methods
};

} // namespace platform
