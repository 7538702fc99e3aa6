#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIView.h"
#include "platform/runtime/message.h"
#include "platform/uikit/transitions.h"

/// The system's own ways of bringing a controller's view in and taking it out.

namespace platform {

namespace {

class AnimatorObject : public NSObject {
public:
    static const ClassDefinition definition;

    TransitionLook look = TransitionLook::CoverVertical;
    bool dismisses = false;

    double duration(const id&) const
    {
        switch (look) {
        case TransitionLook::CoverVertical:
        case TransitionLook::CrossDissolve:
            return 0.4;
        case TransitionLook::FlipHorizontal:
            return 0.75;
        case TransitionLook::Alert:
            return dismisses ? 0.25 : 0.35;
        case TransitionLook::Fade:
            return 0.2;
        }
        return 0;
    }

    void animate(const id& object)
    {
        const Ref<TransitionContextObject> context(as<TransitionContextObject>(object));
        if (!context)
            return;
        const UIView moving(dismisses ? context->fromView : context->toView);
        const UIView container { id(context->container) };
        const CGRect shown = dismisses ? context->initialFromFrame : context->finalToFrame;
        if (!dismisses) {
            moving.setFrame(shown);
            container.addSubview(moving);
        }
        if (!dismisses)
            UIView::performWithoutAnimation([&] { leave(moving, container, shown); });
        const auto motion = [this, moving, container, shown] {
            if (dismisses)
                leave(moving, container, shown);
            else
                arrive(moving, shown);
        };
        const auto end = [context, moving](bool) {
            moving.setAlpha(1);
            moving.setTransform({});
            context->complete(!context->wasCancelled);
        };
        if (look == TransitionLook::Alert && !dismisses)
            send<
                "animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:animations:completion:",
                void>(
                id(UIView::classObject()), duration(nil), 0.0, 0.85, 0.0, NSUInteger { 0 }, block(motion), block(end));
        else
            UIView::animate(duration(nil), 0, curve(), motion, end);
    }

private:
    UIViewAnimationOptions curve() const
    {
        if (look != TransitionLook::CoverVertical)
            return UIViewAnimationOptions::CurveEaseInOut;
        return dismisses ? UIViewAnimationOptions::CurveEaseIn : UIViewAnimationOptions::CurveEaseOut;
    }

    void arrive(const UIView& moving, const CGRect& shown) const
    {
        moving.setAlpha(1);
        moving.setTransform({});
        moving.setFrame(shown);
    }

    void leave(const UIView& moving, const UIView& container, const CGRect& shown) const
    {
        constexpr double alertScale = 1.15;
        constexpr double thin = 0.01;
        switch (look) {
        case TransitionLook::CoverVertical: {
            const CGRect bounds = container.bounds();
            moving.setFrame(CGRectOffset(shown, 0, bounds.size.height - shown.origin.y));
            break;
        }
        case TransitionLook::FlipHorizontal:
            moving.setTransform(CGAffineTransformMakeScale(thin, 1));
            break;
        case TransitionLook::Alert:
            moving.setAlpha(0);
            if (!dismisses)
                moving.setTransform(CGAffineTransformMakeScale(alertScale, alertScale));
            break;
        case TransitionLook::CrossDissolve:
        case TransitionLook::Fade:
            moving.setAlpha(0);
            break;
        }
    }
};

constexpr MethodDefinition methods[] {
    method<"animateTransition:", &AnimatorObject::animate>(),
    method<"transitionDuration:", &AnimatorObject::duration>(),
};

} // namespace

const ClassDefinition AnimatorObject::definition {
    .name = "_UIViewControllerAnimator", .allocate = allocate<AnimatorObject>, .methods = methods
};

id makeAnimator(TransitionLook look, bool dismisses)
{
    const Ref<AnimatorObject> animator = make<AnimatorObject>();
    animator->look = look;
    animator->dismisses = dismisses;
    return animator;
}

} // namespace platform
