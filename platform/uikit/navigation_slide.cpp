#include "platform/handles/UIView.h"
#include "platform/runtime/message.h"
#include "platform/uikit/navigation.h"

namespace platform {

namespace {

/// What slides in from the side, or out to it.
class SlideObject : public NSObject {
public:
    static const ClassDefinition definition;
    bool isPop = false;

    double length(const id&) const { return navigationDuration; }

    void animate(const id& object)
    {
        const Ref<TransitionContextObject> context(as<TransitionContextObject>(object));
        if (!context)
            return;
        const UIView above(isPop ? context->fromView : context->toView);
        const UIView below(isPop ? context->toView : context->fromView);
        const CGRect full = context->finalToFrame;
        const double way = runsRightToLeft(*context->container) ? -full.size.width : full.size.width;
        const CGRect beside = CGRectOffset(full, way, 0);
        const CGRect behind = CGRectOffset(full, -way * navigationParallax, 0);
        above.layer().setShadowOpacity(0.12F);
        above.layer().setShadowRadius(8);
        above.layer().setShadowOffset({});
        UIView::performWithoutAnimation([&] {
            above.setFrame(isPop ? full : beside);
            below.setFrame(isPop ? behind : full);
        });
        UIView::animate(
            navigationDuration, 0, UIViewAnimationOptions::CurveEaseOut,
            [=, this] {
                above.setFrame(isPop ? beside : full);
                below.setFrame(isPop ? full : behind);
            },
            [context, above](bool) {
                above.layer().setShadowOpacity(0);
                context->complete(!context->wasCancelled);
            });
    }
};

constexpr MethodDefinition slideMethods[] {
    method<"animateTransition:", &SlideObject::animate>(),
    method<"transitionDuration:", &SlideObject::length>(),
};

const ClassDefinition SlideObject::definition {
    .name = "_UINavigationSlide", .allocate = allocate<SlideObject>, .methods = slideMethods
};

} // namespace

bool runsRightToLeft(const ViewObject& view)
{
    return send<"effectiveUserInterfaceLayoutDirection", NSInteger>(id(const_cast<ViewObject*>(&view))) == 1;
}

id makeNavigationSlide(bool isPop)
{
    const Ref<SlideObject> slide = make<SlideObject>();
    slide->isPop = isPop;
    return slide;
}

} // namespace platform
