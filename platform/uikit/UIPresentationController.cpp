#include "platform/foundation/values.h"
#include "platform/graphics/appearance.h"
#include "platform/runtime/message.h"
#include "platform/uikit/presentations.h"
#include "platform/uikit/transitions.h"

namespace platform {

CGRect PresentationControllerObject::presentedFrame() const
{
    return container ? container->bounds : CGRect {};
}

bool PresentationControllerObject::removesPresentersView() const
{
    return style == PresentationStyle::FullScreen || style == PresentationStyle::CurrentContext;
}

/// Of the system's own styles: a presentation of somebody else's places its views itself.
void PresentationControllerObject::layOut()
{
    if (style == PresentationStyle::Custom)
        return;
    if (ViewObject* const view = asViewObject(send<"presentedView">(id(this)));
        view && view->superview == container.get())
        place(*view, send<"frameOfPresentedViewInContainerView", CGRect>(id(this)));
}

id PresentationControllerObject::animator(bool dismisses) const
{
    const Ref<ViewControllerObject> controller = presented.get();
    switch (controller ? controller->modalTransitionStyle : 0) {
    case 1:
        return makeAnimator(TransitionLook::FlipHorizontal, dismisses);
    case 2:
        return makeAnimator(TransitionLook::CrossDissolve, dismisses);
    default:
        return makeAnimator(TransitionLook::CoverVertical, dismisses);
    }
}

id PresentationControllerObject::presentedView() const
{
    return send<"view">(id(presented.get()));
}

void PresentationControllerObject::takePresenterAway()
{
    const Ref<ViewControllerObject> presenter = presenting.get();
    const Ref<ViewObject> view(presenter ? presenter->viewIfLoaded() : nullptr);
    if (!view || !view->superview)
        return;
    formerSuperview_ = Ref<ViewObject>(view->superview);
    tookPresenter_ = true;
    send<"removeFromSuperview", void>(id(view));
}

void PresentationControllerObject::bringPresenterBack()
{
    const Ref<ViewControllerObject> presenter = presenting.get();
    const Ref<ViewObject> superview = formerSuperview_.get();
    if (!std::exchange(tookPresenter_, false) || !presenter || !superview)
        return;
    ViewObject* const view = presenter->viewIfLoaded();
    send<"setFrame:", void>(id(view), superview->bounds);
    send<"insertSubview:belowSubview:", void>(id(superview), id(view), id(container));
}

namespace {

PresentationControllerObject& presentationIn(const id& self)
{
    return static_cast<PresentationControllerObject&>(*self);
}

id initWithControllers(const id& self, SEL, const id& presented, const id& presenting)
{
    presentationIn(self).presented = Ref<ViewControllerObject>(asController(presented));
    presentationIn(self).presenting = Ref<ViewControllerObject>(asController(presenting));
    return self;
}

id containerView(const id& self, SEL)
{
    return presentationIn(self).container;
}

id delegate(const id& self, SEL)
{
    return presentationIn(self).delegate.get();
}

void setDelegate(const id& self, SEL, const id& delegate)
{
    presentationIn(self).delegate = delegate;
}

id presentedController(const id& self, SEL)
{
    return presentationIn(self).presented.get();
}

id presentingController(const id& self, SEL)
{
    return presentationIn(self).presenting.get();
}

NSInteger presentationStyle(const id& self, SEL)
{
    return static_cast<NSInteger>(presentationIn(self).style);
}

CGSize sizeForChild(const id&, SEL, const id&, CGSize size)
{
    return size;
}

void willTransition(const id& self, SEL, CGSize size, const id& coordinator)
{
    const id presented = presentationIn(self).presented.get();
    send<"viewWillTransitionToSize:withTransitionCoordinator:", void>(presented,
        send<"sizeForChildContentContainer:withParentContainerSize:", CGSize>(self, presented, size), coordinator);
}

void contentSizeDidChange(const id& self, SEL, const id&)
{
    if (presentationIn(self).container)
        presentationIn(self).container->setNeedsLayout();
}

void willPresent(const id& self, SEL)
{
    presentationIn(self).willPresent();
}

void willDismiss(const id& self, SEL)
{
    presentationIn(self).willDismiss();
}

void layOut(const id& self, SEL)
{
    presentationIn(self).layOut();
}

void nothing(const id&, SEL) { }
void nothingWith(const id&, SEL, bool) { }

bool yes(const id&, SEL)
{
    return true;
}

constexpr MethodDefinition methods[] {
    method<"containerView", &containerView>(),
    method<"containerViewDidLayoutSubviews", &nothing>(),
    method<"containerViewWillLayoutSubviews", &layOut>(),
    method<"delegate", &delegate>(),
    method<"dismissalTransitionDidEnd:", &nothingWith>(),
    method<"dismissalTransitionWillBegin", &willDismiss>(),
    method<"frameOfPresentedViewInContainerView", &PresentationControllerObject::presentedFrame>(),
    method<"initWithPresentedViewController:presentingViewController:", &initWithControllers>(),
    method<"preferredContentSizeDidChangeForChildContentContainer:", &contentSizeDidChange>(),
    method<"presentationStyle", &presentationStyle>(),
    method<"presentationTransitionDidEnd:", &nothingWith>(),
    method<"presentationTransitionWillBegin", &willPresent>(),
    method<"presentedView", &PresentationControllerObject::presentedView>(),
    method<"presentedViewController", &presentedController>(),
    method<"presentingViewController", &presentingController>(),
    method<"setDelegate:", &setDelegate>(),
    method<"shouldPresentInFullscreen", &yes>(),
    method<"shouldRemovePresentersView", &PresentationControllerObject::removesPresentersView>(),
    method<"sizeForChildContentContainer:withParentContainerSize:", &sizeForChild>(),
    method<"viewWillTransitionToSize:withTransitionCoordinator:", &willTransition>(),
};

/// What stands over the presenter: the presented view and what its presentation adds.
class TransitionViewObject : public ViewObject {
public:
    Weak<PresentationControllerObject> presentation {};

    void layOut()
    {
        const id arranger = presentation.get();
        send<"containerViewWillLayoutSubviews", void>(arranger);
        send<"containerViewDidLayoutSubviews", void>(arranger);
    }

    void setPresentation(const id& object)
    {
        presentation = Ref<PresentationControllerObject>(as<PresentationControllerObject>(object));
    }
};

constexpr MethodDefinition containerMethods[] {
    method<"_setPresentationController:", &TransitionViewObject::setPresentation>(),
    method<"layoutSubviews", &TransitionViewObject::layOut>(),
};

/// Follows the appearance.
class DimmingViewObject : public ViewObject {
public:
    Color light {};
    Color dark {};

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        canvas.fill(Path::roundedRect(seen, 0), isDarkNow() ? dark : light);
    }
};

} // namespace

const ClassDefinition PresentationControllerObject::definition {
    .name = "UIPresentationController", .allocate = allocate<PresentationControllerObject>, .methods = methods
};
const ClassDefinition UITransitionView_class { .name = "UITransitionView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<TransitionViewObject>,
    .methods = containerMethods };
const ClassDefinition UIDimmingView_class {
    .name = "UIDimmingView", .superclass = &ViewObject::definition, .allocate = allocate<DimmingViewObject>
};

Ref<ViewObject> makeDimming(const Color& light, const Color& dark, const id& target, SEL action)
{
    const id object = send<"new">(id(classNamed<"UIDimmingView">()));
    auto& view = static_cast<DimmingViewObject&>(*object);
    view.light = light;
    view.dark = dark;
    if (action)
        send<"addGestureRecognizer:", void>(object,
            send<"initWithTarget:action:">(send<"alloc">(id(classNamed<"UITapGestureRecognizer">())), target, action));
    return Ref<ViewObject>(&view);
}

} // namespace platform
