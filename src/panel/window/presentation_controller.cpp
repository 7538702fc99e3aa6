#include "panel/window/presentation_controller.h"

#include "panel/window/presentation_configuration.h"
#include "panel/window/sheet_frames.h"
#include "platform/foundation/block.h"
#include "platform/handles/NSLayoutAnchor.h"
#include "platform/handles/UIPresentationController.h"
#include "platform/handles/UITapGestureRecognizer.h"
#include "platform/handles/UIWindow.h"

namespace appledger {

using namespace platform;

namespace {

constexpr NSUInteger upAndDown = 4 | 8;

struct PresentationFields {
    id dimmingView {};
    Ref<ALDataPresentationConfiguration> configuration {};
};

Class superclass()
{
    return classNamed<"UIPresentationController">();
}

ALDataPresentationConfiguration& configurationOf(const id& self)
{
    auto& fields = fieldsOf<PresentationFields>(self);
    if (!fields.configuration)
        fields.configuration = configurationOrDefault(nil);
    return *fields.configuration;
}

id makeDimmingView(const id& target, const id& color)
{
    UIView view = UIView::create();
    view.setTranslatesAutoresizingMaskIntoConstraints(false);
    view.setBackgroundColor(UIColor(color));
    view.setAlpha(0);
    view.setUserInteractionEnabled(true);
    const SEL dismiss = sel_registerName("dismiss");
    view.addGestureRecognizer(UITapGestureRecognizer::withTarget(target, dismiss));
    const id swipe
        = send<"initWithTarget:action:">(send<"alloc">(id(classNamed<"UISwipeGestureRecognizer">())), target, dismiss);
    send<"setDirection:", void>(swipe, upAndDown);
    view.addGestureRecognizer(UIGestureRecognizer(swipe));
    return view;
}

id init(const id& allocated, SEL, const id& presented, const id& presenting, const id& configuration)
{
    id self = sendSuper<"initWithPresentedViewController:presentingViewController:">(
        superclass(), allocated, presented, presenting);
    if (!self)
        return nil;
    auto& fields = fieldsOf<PresentationFields>(self);
    fields.configuration = configurationOrDefault(configuration);
    fields.dimmingView = makeDimmingView(self, fields.configuration->dimmingViewBackgroundColor);
    return self;
}

id configuration(const id& self, SEL)
{
    return id(&configurationOf(self));
}

void dismiss(const id& self, SEL)
{
    const id presented = send<"presentedViewController">(self);
    if (!ask<"dismiss", void>(presented))
        UIViewController(presented).dismiss(true);
}

/// Alongside the transition, or at once where there is none.
void dim(const id& self, CGFloat alpha)
{
    const UIView dimming(fieldsOf<PresentationFields>(self).dimmingView);
    const id coordinator = send<"transitionCoordinator">(send<"presentedViewController">(self));
    if (!coordinator)
        return dimming.setAlpha(alpha);
    send<"animateAlongsideTransition:completion:", bool>(
        coordinator, block([dimming, alpha](const id&) { dimming.setAlpha(alpha); }), nil);
}

void pinEdges(const UIView& view, const UIView& superview)
{
    view.topAnchor().equalTo(superview.topAnchor()).setActive(true);
    view.bottomAnchor().equalTo(superview.bottomAnchor()).setActive(true);
    view.leadingAnchor().equalTo(superview.leadingAnchor()).setActive(true);
    view.trailingAnchor().equalTo(superview.trailingAnchor()).setActive(true);
}

void presentationTransitionWillBegin(const id& self, SEL)
{
    sendSuper<"presentationTransitionWillBegin", void>(superclass(), self);
    const UIView container = UIPresentationController(self).containerView();
    if (const UIView superview = container.superview())
        if (const UIView beyond = superview.superview())
            beyond.bringSubviewToFront(superview);
    if (const UIWindow window = container.window())
        window.bringSubviewToFront(container);
    const UIView dimming(fieldsOf<PresentationFields>(self).dimmingView);
    container.insertSubviewAt(dimming, 0);
    pinEdges(dimming, container);
    dim(self, 1);
}

void dismissalTransitionWillBegin(const id& self, SEL)
{
    sendSuper<"dismissalTransitionWillBegin", void>(superclass(), self);
    dim(self, 0);
}

void containerViewWillLayoutSubviews(const id& self, SEL)
{
    const UIPresentationController controller(self);
    controller.presentedView().setFrame(controller.frameOfPresentedViewInContainerView());
}

CGRect customFrame(const id& self)
{
    return callBlock<CGRect>(
        configurationOf(self).customFrameHandler, id(UIPresentationController(self).containerView()));
}

CGRect frameOfPresentedView(const id& self, SEL)
{
    const ALDataPresentationConfiguration& configuration = configurationOf(self);
    if (configuration.customFrameHandler)
        return customFrame(self);
    const CGSize container = UIPresentationController(self).containerView().bounds().size;
    const auto size = send<"sizeForChildContentContainer:withParentContainerSize:", CGSize>(
        self, send<"presentedViewController">(self), container);
    return shownSheetFrame(configuration.direction, configuration.screenPercentage, size, container);
}

CGSize sizeForChild(const id& self, SEL, const id&, CGSize container)
{
    const ALDataPresentationConfiguration& configuration = configurationOf(self);
    if (configuration.customFrameHandler)
        return customFrame(self).size;
    return sheetSize(configuration.direction, configuration.screenPercentage, container);
}

constexpr MethodDefinition methods[] {
    method<"configuration", &configuration>(),
    method<"containerViewWillLayoutSubviews", &containerViewWillLayoutSubviews>(),
    getter<"dimmingView", &PresentationFields::dimmingView>(),
    method<"dismiss", &dismiss>(),
    method<"dismissalTransitionWillBegin", &dismissalTransitionWillBegin>(),
    method<"frameOfPresentedViewInContainerView", &frameOfPresentedView>(),
    method<"initWithPresentedViewController:presentingViewController:configuration:", &init>(),
    method<"presentationTransitionWillBegin", &presentationTransitionWillBegin>(),
    method<"sizeForChildContentContainer:withParentContainerSize:", &sizeForChild>(),
};

} // namespace

const ClassDefinition ALDataPresentationController_class {
    .name = "ALDataPresentationController", .superclassName = "UIPresentationController", .methods = methods
};

} // namespace appledger
