#include "platform/uikit/transitions.h"

#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIView.h"
#include "platform/runtime/message.h"

namespace platform {

bool CoordinatorObject::animateAlongside(const id& animation, const id& completion)
{
    if (stage_ == Stage::Over)
        return false;
    if (completion)
        completions_.push_back(completion);
    if (animation)
        animations_.push_back(animation);
    if (stage_ == Stage::Running)
        start();
    return true;
}

void CoordinatorObject::start()
{
    stage_ = Stage::Running;
    const std::vector<id> asked = std::exchange(animations_, {});
    if (asked.empty())
        return;
    const id self(this);
    UIView::animate(duration, [&asked, &self] {
        for (const id& animation : asked)
            callBlock(animation, self);
    });
}

void CoordinatorObject::finish()
{
    const id self(this);
    stage_ = Stage::Over;
    for (const id& animation : std::exchange(animations_, {}))
        callBlock(animation, self);
    for (const id& completion : std::exchange(completions_, {}))
        callBlock(completion, self);
}

void TransitionContextObject::run(const id& animator)
{
    const Ref<TransitionContextObject> self(this);
    from->transition = self;
    to->transition = self;
    animator_ = animator;
    if (!animator || !respondsTo<"animateTransition:">(animator))
        return complete(true);
    if (coordinator)
        coordinator->duration = ask<"transitionDuration:", double>(animator, id(self)).value_or(0);
    send<"animateTransition:", void>(animator, id(self));
    if (coordinator && !isOver_)
        coordinator->start();
}

void TransitionContextObject::complete(bool didComplete)
{
    if (std::exchange(isOver_, true))
        return;
    const Ref<TransitionContextObject> self(this);
    wasCancelled = wasCancelled || !didComplete;
    ask<"animationEnded:", void>(animator_, didComplete);
    for (const Ref<ViewControllerObject>& controller : { from, to })
        if (controller->transition == self)
            controller->transition = nullptr;
    if (const auto end = std::exchange(completion, nullptr))
        end(didComplete);
    animator_ = nil;
    for (const auto& work : std::exchange(afterwards_, {}))
        work();
}

void TransitionContextObject::afterwards(std::function<void()> work)
{
    if (isOver_)
        work();
    else
        afterwards_.push_back(std::move(work));
}

namespace {

TransitionContextObject& contextIn(const id& self)
{
    return static_cast<TransitionContextObject&>(*self);
}

id controllerForKey(const id& self, SEL, const id& key)
{
    const auto name = asString(key);
    if (!name)
        return nil;
    const TransitionContextObject& context = contextIn(self);
    if (*name == "UITransitionContextFromViewController")
        return context.from;
    return *name == "UITransitionContextToViewController" ? id(context.to) : nil;
}

id viewForKey(const id& self, SEL, const id& key)
{
    const auto name = asString(key);
    if (!name)
        return nil;
    const TransitionContextObject& context = contextIn(self);
    if (*name == "UITransitionContextFromView")
        return context.fromView;
    return *name == "UITransitionContextToView" ? context.toView : nil;
}

CGRect initialFrame(const id& self, SEL, const id& controller)
{
    const TransitionContextObject& context = contextIn(self);
    if (controller && controller == id(context.from))
        return context.initialFromFrame;
    return controller && controller == id(context.to) ? context.initialToFrame : CGRect {};
}

CGRect finalFrame(const id& self, SEL, const id& controller)
{
    const TransitionContextObject& context = contextIn(self);
    if (controller && controller == id(context.from))
        return context.finalFromFrame;
    return controller && controller == id(context.to) ? context.finalToFrame : CGRect {};
}

id containerView(const id& self, SEL)
{
    return contextIn(self).container;
}

CGAffineTransform targetTransform(const id&, SEL)
{
    return {};
}

NSInteger presentationStyle(const id& self, SEL)
{
    return static_cast<NSInteger>(contextIn(self).style);
}

bool no(const id&, SEL)
{
    return false;
}

void updateInteractive(const id&, SEL, double) { }
void finishInteractive(const id&, SEL) { }

void cancelInteractive(const id& self, SEL)
{
    contextIn(self).wasCancelled = true;
}

constexpr MethodDefinition contextMethods[] {
    method<"cancelInteractiveTransition", &cancelInteractive>(),
    method<"completeTransition:", &TransitionContextObject::complete>(),
    method<"containerView", &containerView>(),
    method<"finalFrameForViewController:", &finalFrame>(),
    method<"finishInteractiveTransition", &finishInteractive>(),
    method<"initialFrameForViewController:", &initialFrame>(),
    getter<"isAnimated", &TransitionContextObject::isAnimated>(),
    method<"isInteractive", &no>(),
    method<"presentationStyle", &presentationStyle>(),
    method<"targetTransform", &targetTransform>(),
    getter<"transitionWasCancelled", &TransitionContextObject::wasCancelled>(),
    method<"updateInteractiveTransition:", &updateInteractive>(),
    method<"viewControllerForKey:", &controllerForKey>(),
    method<"viewForKey:", &viewForKey>(),
};

template <Name S, class R, class... A> R passToContext(const id& self, SEL, A... arguments)
{
    const Ref<TransitionContextObject> context = static_cast<CoordinatorObject&>(*self).context.get();
    return send<S, R>(id(context), arguments...);
}

bool animateInView(const id& self, SEL, const id&, const id& animation, const id& completion)
{
    return static_cast<CoordinatorObject&>(*self).animateAlongside(animation, completion);
}

constexpr MethodDefinition coordinatorMethods[] {
    method<"animateAlongsideTransition:completion:", &CoordinatorObject::animateAlongside>(),
    method<"animateAlongsideTransitionInView:animation:completion:", &animateInView>(),
    method<"containerView", &passToContext<"containerView", id>>(),
    method<"isAnimated", &passToContext<"isAnimated", bool>>(),
    method<"isCancelled", &passToContext<"transitionWasCancelled", bool>>(),
    method<"isInteractive", &no>(),
    method<"presentationStyle", &passToContext<"presentationStyle", NSInteger>>(),
    method<"targetTransform", &targetTransform>(),
    getter<"transitionDuration", &CoordinatorObject::duration>(),
    method<"viewControllerForKey:", &passToContext<"viewControllerForKey:", id, const id&>>(),
    method<"viewForKey:", &passToContext<"viewForKey:", id, const id&>>(),
};

} // namespace

const ClassDefinition TransitionContextObject::definition { .name = "_UIViewControllerTransitionContext",
    .allocate = allocate<TransitionContextObject>,
    .methods = contextMethods };
const ClassDefinition CoordinatorObject::definition { .name = "_UIViewControllerTransitionCoordinator",
    .allocate = allocate<CoordinatorObject>,
    .methods = coordinatorMethods };

} // namespace platform
