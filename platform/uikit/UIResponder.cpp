#include "platform/uikit/responders.h"

#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"

namespace platform {

namespace {

Weak<NSObject>& first()
{
    static auto* const responder = new Weak<NSObject>;
    return *responder;
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
    if (former && !send<"resignFirstResponder", bool>(former))
        return false;
    first() = self;
    return true;
}

/// True also for one that isn't the first, which has nothing to give up.
bool resignFirstResponder(const id& self, SEL)
{
    if (firstResponder() != self)
        return true;
    if (!send<"canResignFirstResponder", bool>(self))
        return false;
    first() = nullptr;
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

} // namespace platform
