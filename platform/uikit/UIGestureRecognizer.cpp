#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

/// The touch that is being looked at, and with it the gestures that compete for it.
UITouch*& currentTouch()
{
    static UITouch* touch = nullptr;
    return touch;
}

UIGestureRecognizer& gestureIn(const id& object)
{
    return static_cast<UIGestureRecognizer&>(*object);
}

bool runTogether(const UIGestureRecognizer& left, const UIGestureRecognizer& right)
{
    const auto agrees = [](const UIGestureRecognizer& one, const UIGestureRecognizer& other) {
        return ask<"gestureRecognizer:shouldRecognizeSimultaneouslyWithGestureRecognizer:", bool>(
            one.delegate, id(const_cast<UIGestureRecognizer*>(&one)), id(const_cast<UIGestureRecognizer*>(&other)))
            .value_or(false);
    };
    return agrees(left, right) || agrees(right, left);
}

} // namespace

TouchInView::TouchInView(UITouch& touch)
    : outer_(std::exchange(currentTouch(), &touch))
{
}

TouchInView::~TouchInView()
{
    currentTouch() = outer_;
}

void UIGestureRecognizer::addTarget(const id& target, SEL action)
{
    targets_.emplace_back(target, action);
}

void UIGestureRecognizer::removeTarget(const id& target, SEL action)
{
    std::erase_if(targets_, [&](const auto& present) {
        return (!target || present.first.get() == target) && (!action || present.second == action);
    });
}

bool UIGestureRecognizer::enter(GestureState newState)
{
    const id self(this);
    if (!view.get()) {
        fail();
        return false;
    }
    UITouch* const touch = currentTouch();
    if (state == GestureState::Possible) {
        const auto rivals = touch ? touch->gestures : std::vector<id>();
        for (const id& rival : rivals)
            if (rival != self && (gestureIn(rival).isUnderWay() || gestureIn(rival).state == GestureState::Ended)
                && !runTogether(*this, gestureIn(rival))) {
                fail();
                return false;
            }
        if (!ask<"gestureRecognizerShouldBegin:", bool>(delegate, self).value_or(true)) {
            fail();
            return false;
        }
        for (const id& rival : rivals)
            if (rival != self && gestureIn(rival).state == GestureState::Possible
                && !runTogether(*this, gestureIn(rival)))
                gestureIn(rival).fail();
        if (touch && cancelsTouchesInView)
            touch->takenByGesture = true;
    }
    state = newState;
    const auto targets = targets_;
    for (const auto& [target, action] : targets) {
        const id receiver = target;
        const auto types = class_getMethodTypes(object_getClass(receiver), action);
        if (types == "v@:@")
            sendSelector<void>(receiver, action, self);
        else if (types == "v@:")
            sendSelector<void>(receiver, action);
    }
    return true;
}

namespace {

/// Of the view and of those that it stands in, before anyone is asked: a delegate may take any of them away.
std::vector<id> gesturesAround(const UIView* view)
{
    std::vector<id> gestures;
    for (; view; view = view->superview)
        for (const id& gesture : itemsOf(view->gestureRecognizers))
            gestures.push_back(gesture);
    return gestures;
}

} // namespace

void letGesturesLook(UITouch& touch, const id&)
{
    if (touch.phase == TouchPhase::Began)
        for (const id& gesture : gesturesAround(touch.view.get()))
            if (gestureIn(gesture).enabled
                && ask<"gestureRecognizer:shouldReceiveTouch:", bool>(gestureIn(gesture).delegate, gesture, id(&touch))
                       .value_or(true)) {
                gestureIn(gesture).state = GestureState::Possible;
                gestureIn(gesture).reset();
                touch.gestures.push_back(gesture);
            }
    const TouchInView looking(touch);
    const std::vector<id> gestures = touch.gestures;
    for (const id& gesture : gestures) {
        UIGestureRecognizer& recognizer = gestureIn(gesture);
        recognizer.location = touch.location;
        if (!recognizer.isOver())
            recognizer.track(touch);
    }
    if (touch.phase == TouchPhase::Ended || touch.phase == TouchPhase::Cancelled) {
        for (const id& gesture : gestures) {
            if (gestureIn(gesture).isUnderWay())
                gestureIn(gesture).enter(GestureState::Cancelled);
            gestureIn(gesture).state = GestureState::Possible;
        }
        touch.gestures.clear();
    }
}

namespace {

id initWithTarget(const id& self, SEL, const id& target, SEL action)
{
    if (target && action)
        gestureIn(self).addTarget(target, action);
    return self;
}

id view(const id& self, SEL)
{
    return gestureIn(self).view;
}

CGPoint locationInView(const id& self, SEL, const id& view)
{
    const auto* const target = asView(view);
    return target ? target->pointFromRoot(gestureIn(self).location) : gestureIn(self).location;
}

constexpr MethodDefinition methods[] {
    method<"addTarget:action:", &UIGestureRecognizer::addTarget>(),
    getter<"delegate", &UIGestureRecognizer::delegate>(),
    method<"initWithTarget:action:", &initWithTarget>(),
    getter<"isEnabled", &UIGestureRecognizer::enabled>(),
    method<"locationInView:", &locationInView>(),
    method<"removeTarget:action:", &UIGestureRecognizer::removeTarget>(),
    setter<"setCancelsTouchesInView:", &UIGestureRecognizer::cancelsTouchesInView>(),
    setter<"setDelegate:", &UIGestureRecognizer::delegate>(),
    setter<"setEnabled:", &UIGestureRecognizer::enabled>(),
    getter<"state", &UIGestureRecognizer::state>(),
    method<"view", &view>(),
};

void removeGesture(const id& self, SEL, const id& gesture)
{
    auto* const recognizer = as<UIGestureRecognizer>(gesture);
    if (!recognizer || id(recognizer->view) != self)
        return;
    const id kept = gesture;
    if (recognizer->isUnderWay())
        recognizer->enter(GestureState::Cancelled);
    recognizer->view = {};
    send<"removeObject:", void>(asView(self)->gestureRecognizers, kept);
}

void addGesture(const id& self, SEL cmd, const id& gesture)
{
    auto* const recognizer = as<UIGestureRecognizer>(gesture);
    if (!recognizer)
        return;
    if (const id former = recognizer->view)
        removeGesture(former, cmd, gesture);
    const Ref<UIView> view(asView(self));
    recognizer->view = view;
    if (!view->gestureRecognizers)
        view->gestureRecognizers = mutableArray();
    send<"addObject:", void>(view->gestureRecognizers, gesture);
}

id gestures(const id& self, SEL)
{
    const ArrayValue items = itemsOf(asView(self)->gestureRecognizers);
    return array({ items.begin(), items.end() });
}

constexpr MethodDefinition viewRows[] {
    method<"addGestureRecognizer:", &addGesture>(),
    method<"gestureRecognizers", &gestures>(),
    method<"removeGestureRecognizer:", &removeGesture>(),
};

} // namespace

constinit const std::span<const MethodDefinition> gestureMethods { viewRows };

const ClassDefinition UIGestureRecognizer::definition {
    .name = "UIGestureRecognizer", .allocate = allocate<UIGestureRecognizer>, .methods = methods
};

} // namespace platform
