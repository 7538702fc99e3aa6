#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

GestureRecognizerObject& gestureIn(const id& object)
{
    return static_cast<GestureRecognizerObject&>(*object);
}

/// What a class makes of touches that says nothing about it.
class PlainGesture final : public GestureRecognizerObject {
    void began(const TouchObject&) override { }
    void moved(const TouchObject&) override { }
    void ended(const TouchObject&) override { fail(); }
};

/// Of the view and of those that it stands in, before anyone is asked: a delegate may take any of them away.
std::vector<id> gesturesAround(const ViewObject* view)
{
    std::vector<id> gestures;
    for (; view; view = view->superview)
        for (const id& gesture : itemsOf(view->gestureRecognizers))
            gestures.push_back(gesture);
    return gestures;
}

} // namespace

void beginGestures(TouchObject& touch)
{
    for (const id& gesture : gesturesAround(touch.view.get()))
        if (gestureIn(gesture).isEnabled()
            && ask<"gestureRecognizer:shouldReceiveTouch:", bool>(gestureIn(gesture).delegate, gesture, id(&touch))
                   .value_or(true))
            gestureIn(gesture).begin(touch);
}

void abandonGestures(const ViewObject& view)
{
    const ArrayValue present = itemsOf(view.gestureRecognizers);
    const std::vector<id> gestures(present.begin(), present.end());
    for (const id& gesture : gestures)
        gestureIn(gesture).abandon();
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
    const auto* const target = asViewObject(view);
    return target ? target->pointFromRoot(gestureIn(self).location()) : gestureIn(self).location();
}

bool isEnabled(const id& self, SEL)
{
    return gestureIn(self).isEnabled();
}

GestureState state(const id& self, SEL)
{
    return gestureIn(self).state();
}

constexpr MethodDefinition methods[] {
    method<"addTarget:action:", &GestureRecognizerObject::addTarget>(),
    getter<"cancelsTouchesInView", &GestureRecognizerObject::cancelsTouchesInView>(),
    getter<"delegate", &GestureRecognizerObject::delegate>(),
    method<"initWithTarget:action:", &initWithTarget>(),
    method<"isEnabled", &isEnabled>(),
    method<"locationInView:", &locationInView>(),
    method<"removeTarget:action:", &GestureRecognizerObject::removeTarget>(),
    method<"requireGestureRecognizerToFail:", &GestureRecognizerObject::requireToFail>(),
    setter<"setCancelsTouchesInView:", &GestureRecognizerObject::cancelsTouchesInView>(),
    setter<"setDelegate:", &GestureRecognizerObject::delegate>(),
    method<"setEnabled:", &GestureRecognizerObject::setEnabled>(),
    method<"state", &state>(),
    method<"view", &view>(),
};

void removeGesture(const id& self, SEL, const id& gesture)
{
    auto* const recognizer = as<GestureRecognizerObject>(gesture);
    if (!recognizer || id(recognizer->view) != self)
        return;
    const id kept = gesture;
    recognizer->abandon();
    recognizer->view = {};
    send<"removeObject:", void>(asViewObject(self)->gestureRecognizers, kept);
}

void addGesture(const id& self, SEL cmd, const id& gesture)
{
    auto* const recognizer = as<GestureRecognizerObject>(gesture);
    if (!recognizer)
        return;
    if (const id former = recognizer->view)
        removeGesture(former, cmd, gesture);
    const Ref<ViewObject> view(asViewObject(self));
    recognizer->view = view;
    if (!view->gestureRecognizers)
        view->gestureRecognizers = mutableArray();
    send<"addObject:", void>(view->gestureRecognizers, gesture);
}

id gestures(const id& self, SEL)
{
    const ArrayValue items = itemsOf(asViewObject(self)->gestureRecognizers);
    return array({ items.begin(), items.end() });
}

constexpr MethodDefinition viewRows[] {
    method<"addGestureRecognizer:", &addGesture>(),
    method<"gestureRecognizers", &gestures>(),
    method<"removeGestureRecognizer:", &removeGesture>(),
};

} // namespace

constinit const std::span<const MethodDefinition> gestureMethods { viewRows };

const ClassDefinition GestureRecognizerObject::definition {
    .name = "UIGestureRecognizer", .allocate = allocate<PlainGesture>, .methods = methods
};

} // namespace platform
