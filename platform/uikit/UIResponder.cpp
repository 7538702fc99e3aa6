#include "platform/uikit/responders.h"

#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"
#include "platform/uikit/keyboard.h"

namespace platform {

namespace {

Weak<NSObject>& first()
{
    static auto* const responder = new Weak<NSObject>;
    return *responder;
}

/// While one takes it over from another, there is no moment without one for the keyboard to leave in.
int handovers = 0;

void keyboardFollows()
{
    if (handovers == 0)
        followFirstResponder();
}

id nextResponder(const id&, SEL)
{
    return nil;
}

bool isFirstResponder(const id& self, SEL)
{
    return firstResponder() == self;
}

bool canBecomeFirstResponder(const id&, SEL)
{
    return false;
}

bool canResignFirstResponder(const id&, SEL)
{
    return true;
}

bool becomeFirstResponder(const id& self, SEL)
{
    const id former = firstResponder();
    if (former == self)
        return true;
    if (!send<"canBecomeFirstResponder", bool>(self))
        return false;
    ++handovers;
    const bool isFree = !former || send<"resignFirstResponder", bool>(former);
    --handovers;
    if (isFree)
        first() = self;
    keyboardFollows();
    return isFree;
}

/// True also for one that isn't the first, which has nothing to give up.
bool resignFirstResponder(const id& self, SEL)
{
    if (firstResponder() != self)
        return true;
    if (!send<"canResignFirstResponder", bool>(self))
        return false;
    first() = nullptr;
    keyboardFollows();
    return true;
}

bool canPerformAction(const id& self, SEL, SEL action, const id&)
{
    return respondsToSelector(self, action);
}

id targetForAction(const id& self, SEL, SEL action, const id& sender)
{
    for (id responder = self; responder; responder = askObject<"nextResponder">(responder))
        if (ask<"canPerformAction:withSender:", bool>(responder, action, sender).value_or(false))
            return responder;
    return nil;
}

void reloadInputViews(const id& self, SEL)
{
    if (firstResponder() == self)
        keyboardTextChanged();
}

/// What a responder doesn't take, the next one gets.
template <Name Selector> void passOn(const id& self, SEL, const id& touches, const id& event)
{
    ask<Selector, void>(askObject<"nextResponder">(self), touches, event);
}

constexpr MethodDefinition methods[] {
    method<"becomeFirstResponder", &becomeFirstResponder>(),
    method<"canBecomeFirstResponder", &canBecomeFirstResponder>(),
    method<"canPerformAction:withSender:", &canPerformAction>(),
    method<"canResignFirstResponder", &canResignFirstResponder>(),
    method<"isFirstResponder", &isFirstResponder>(),
    method<"nextResponder", &nextResponder>(),
    method<"reloadInputViews", &reloadInputViews>(),
    method<"resignFirstResponder", &resignFirstResponder>(),
    method<"targetForAction:withSender:", &targetForAction>(),
    method<"touchesBegan:withEvent:", &passOn<"touchesBegan:withEvent:">>(),
    method<"touchesCancelled:withEvent:", &passOn<"touchesCancelled:withEvent:">>(),
    method<"touchesEnded:withEvent:", &passOn<"touchesEnded:withEvent:">>(),
    method<"touchesMoved:withEvent:", &passOn<"touchesMoved:withEvent:">>(),
};

} // namespace

const ClassDefinition UIResponder_class { .name = "UIResponder", .methods = methods };

id firstResponder()
{
    return first();
}

void forceResignation(const id& responder)
{
    if (firstResponder() != responder)
        return;
    send<"resignFirstResponder", bool>(responder);
    if (firstResponder() != responder)
        return;
    first() = nullptr;
    ask<"_didLoseFirstResponder", void>(responder);
    keyboardFollows();
}

} // namespace platform
