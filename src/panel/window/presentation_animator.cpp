#include "panel/window/presentation_animator.h"

#include "panel/window/sheet_frames.h"
#include "platform/handles/UIViewController.h"

namespace appledger {

using namespace platform;

namespace {

using Animator = ALDataPresentationAnimator;

Animator& animatorIn(const id& self)
{
    return static_cast<Animator&>(*self);
}

id initWithConfiguration(const id& self, SEL, const id& configuration, bool isPresentation)
{
    animatorIn(self).configuration = configurationOrDefault(configuration);
    animatorIn(self).isPresentation = isPresentation;
    return self;
}

id configuration(const id& self, SEL)
{
    return animatorIn(self).configuration;
}

double transitionDuration(const id& self, SEL, const id&)
{
    return animatorIn(self).configuration->animationDuration;
}

struct End {
    CGRect frame;
    CGFloat alpha;
};

/// Where the sheet is hidden, and how much of it can be seen there.
End hiddenEnd(const ALDataPresentationConfiguration& configuration, const CGRect& shown, CGSize container)
{
    const bool grows = configuration.sourceRect != CGRect {};
    return { grows ? configuration.sourceRect : hiddenSheetFrame(configuration.direction, shown, container),
        configuration.fadeAnimationAlpha };
}

void take(const UIView& view, const End& end, bool fades)
{
    view.setFrame(end.frame);
    if (fades)
        view.setAlpha(end.alpha);
}

void animateTransition(const id& self, SEL, const id& context)
{
    const bool isPresentation = animatorIn(self).isPresentation;
    const ALDataPresentationConfiguration& configuration = *animatorIn(self).configuration;
    const UIViewController moving(send<"viewControllerForKey:">(context,
        string(isPresentation ? "UITransitionContextToViewController" : "UITransitionContextFromViewController")));
    if (!moving)
        return;
    const UIView view = moving.view();
    const UIView container(send<"containerView">(context));
    if (isPresentation)
        container.addSubview(view);

    const End shown { send<"finalFrameForViewController:", CGRect>(context, moving), 1 };
    const End hidden = hiddenEnd(configuration, shown.frame, container.bounds().size);
    const End& start = isPresentation ? hidden : shown;
    const End& end = isPresentation ? shown : hidden;
    const bool fades = configuration.fadeAnimation;
    take(view, start, fades);
    UIView::animate(
        send<"transitionDuration:", double>(self, context), [view, end, fades] { take(view, end, fades); },
        [context](bool isFinished) { send<"completeTransition:", void>(context, isFinished); });
}

constexpr MethodDefinition methods[] {
    method<"animateTransition:", &animateTransition>(),
    method<"configuration", &configuration>(),
    method<"initWithConfiguration:isPresentation:", &initWithConfiguration>(),
    getter<"isPresentation", &Animator::isPresentation>(),
    setter<"setIsPresentation:", &Animator::isPresentation>(),
    method<"transitionDuration:", &transitionDuration>(),
};

} // namespace

const ClassDefinition ALDataPresentationAnimator::definition {
    .name = "ALDataPresentationAnimator", .allocate = allocate<ALDataPresentationAnimator>, .methods = methods
};

} // namespace appledger
