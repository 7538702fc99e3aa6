#include "platform/darwin/system.h"
#include "platform/foundation/block.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/device.h"
#include "platform/uikit/transitions.h"

#include <ranges>

/// One controller over another, and away again.

namespace platform {

PresentationStyle automaticStyle() noexcept
{
    constexpr int firstWithSheets = 13;
    const int major = processFacts().version.major;
    return major == 0 || major >= firstWithSheets ? PresentationStyle::PageSheet : PresentationStyle::FullScreen;
}

using Controller = Ref<ViewControllerObject>;
using Stack = std::vector<Controller>;

/// The steps, which may look into a controller.
struct Presenting {
    static Controller shownBy(const ViewControllerObject& controller) { return controller.presented_; }

    /// What is shown by the controller or by one that it holds.
    static Controller shownInside(const ViewControllerObject& controller)
    {
        if (controller.presented_)
            return controller.presented_;
        for (const Controller& child : controller.children_)
            if (Controller shown = shownInside(*child))
                return shown;
        return nullptr;
    }

    /// The controller that shows for this one: the context that the style asks for, else the one that holds all.
    static Controller presenterFor(ViewControllerObject& controller, PresentationStyle style)
    {
        if (style == PresentationStyle::CurrentContext || style == PresentationStyle::OverCurrentContext)
            for (Controller holder(&controller); holder; holder = holder->parent())
                if (holder->definesPresentationContext)
                    return holder;
        return controller.outermost();
    }

    static Ref<PresentationControllerObject> presentationOf(
        const Controller& presented, const Controller& presenter, const id& source)
    {
        Ref<PresentationControllerObject> presentation;
        const auto style = static_cast<PresentationStyle>(send<"modalPresentationStyle", NSInteger>(id(presented)));
        if (style == PresentationStyle::Custom)
            presentation = Ref<PresentationControllerObject>(as<PresentationControllerObject>(askObject<
                "presentationControllerForPresentedViewController:presentingViewController:sourceViewController:">(
                presented->transitioningDelegate.get(), id(presented), id(presenter), source)));
        if (!presentation)
            presentation = Ref<PresentationControllerObject>(
                as<PresentationControllerObject>(send<"presentationController">(id(presented))));
        if (presentation->style == PresentationStyle::Popover && !isPad())
            presentation = adapted(presentation);
        presented->presentation_ = presentation;
        presentation->presented = presented;
        presentation->presenting = presenter;
        return presentation;
    }

    /// What a popover becomes on the phone: a sheet, or what its delegate says.
    static Ref<PresentationControllerObject> adapted(const Ref<PresentationControllerObject>& popover)
    {
        const auto wanted = ask<"adaptivePresentationStyleForPresentationController:", NSInteger>(
            popover->delegate.get(), id(popover));
        const PresentationStyle style = wanted ? static_cast<PresentationStyle>(*wanted) : automaticStyle();
        if (style == PresentationStyle::None || style == PresentationStyle::Popover)
            return popover;
        const bool isSheet = style == PresentationStyle::PageSheet || style == PresentationStyle::FormSheet;
        auto other = isSheet ? makeSheetPresentation(style) : make<PresentationControllerObject>();
        other->style = style;
        other->delegate = popover->delegate;
        return other;
    }

    static Ref<ViewObject> containerFor(
        PresentationControllerObject& presentation, const ViewControllerObject& presenter)
    {
        ViewObject* const below = presenter.viewIfLoaded();
        ViewObject* place = below->window();
        const bool isInContext = presentation.style == PresentationStyle::CurrentContext
            || presentation.style == PresentationStyle::OverCurrentContext;
        if (isInContext && below->superview)
            place = below->superview;
        const Ref<ViewObject> container(
            asViewObject(send<"initWithFrame:">(send<"alloc">(id(classNamed<"UITransitionView">())),
                isInContext && below->superview ? below->frame() : place->bounds)));
        constexpr NSUInteger flexibleWidthAndHeight = 2 | 16;
        container->autoresizingMask = flexibleWidthAndHeight;
        send<"_setPresentationController:", void>(id(container), id(&presentation));
        presentation.container = container;
        send<"addSubview:", void>(id(place), id(container));
        return container;
    }

    static id animatorFor(const Controller& presented, const Controller& presenter, const id& source,
        const PresentationControllerObject& presentation, bool dismisses)
    {
        const id delegate = presented->transitioningDelegate.get();
        const id own = dismisses
            ? askObject<"animationControllerForDismissedController:">(delegate, id(presented))
            : askObject<"animationControllerForPresentedController:presentingController:sourceController:">(
                delegate, id(presented), id(presenter), source);
        return own ? own : presentation.animator(dismisses);
    }

    static Ref<TransitionContextObject> contextOf(const Ref<PresentationControllerObject>& presentation, bool animated)
    {
        auto context = make<TransitionContextObject>();
        context->container = presentation->container;
        context->isAnimated = animated;
        context->style = presentation->style;
        if (animated) {
            context->coordinator = make<CoordinatorObject>();
            context->coordinator->context = context;
        }
        return context;
    }

    static void present(ViewControllerObject& source, const Controller& presented, bool animated, const id& completion)
    {
        const auto style = static_cast<PresentationStyle>(send<"modalPresentationStyle", NSInteger>(id(presented)));
        const Controller presenter = presenterFor(source, style);
        const std::string attempt = "Attempt to present " + nameOf(*presented) + " on " + nameOf(*presenter);
        if (presenter->presented_)
            return complain(attempt + " which is already presenting " + nameOf(*presenter->presented_));
        if (presented->presenting_.get() || presented->parent() || presented == presenter)
            return complain(attempt + ": it is shown already");
        if (const auto running = presenter->transition; running && running->style == PresentationStyle::None)
            return running->afterwards([holder = Controller(&source), presented, animated, completion] {
                present(*holder, presented, animated, completion);
            });
        if (presenter->transition)
            return complain(attempt + " while a presentation or dismissal is in progress");
        ViewObject* const below = presenter->viewIfLoaded();
        if (!below || !below->window())
            return complain(attempt + " whose view is not in the window hierarchy");

        presenter->presented_ = presented;
        presented->presenting_ = presenter;
        presented->isBeingPresented = true;
        const auto presentation = presentationOf(presented, presenter, id(&source));
        const auto context = contextOf(presentation, animated);
        context->from = presenter;
        context->to = presented;
        presenter->transition = context;
        presented->transition = context;
        context->container = containerFor(*presentation, *presenter);
        send<"view">(id(presented));
        const bool takesAway = send<"shouldRemovePresentersView", bool>(id(presentation));
        send<"presentationTransitionWillBegin", void>(id(presentation));
        context->toView = send<"presentedView">(id(presentation));
        context->fromView = takesAway ? id(below) : nil;
        context->initialFromFrame = below->frame();
        context->finalFromFrame = takesAway ? CGRect {} : below->frame();
        context->finalToFrame = send<"frameOfPresentedViewInContainerView", CGRect>(id(presentation));
        if (takesAway)
            presenter->beginAppearance(false, animated);
        presented->beginAppearance(true, animated);

        context->completion = [=, context = context.get()](bool did) {
            if (did) {
                send<"presentationTransitionDidEnd:", void>(id(presentation), true);
                presented->endAppearance();
                if (takesAway) {
                    presentation->takePresenterAway();
                    presenter->endAppearance();
                }
                presented->isBeingPresented = false;
            } else {
                undo(*presentation, presenter, presented, takesAway);
            }
            if (context->coordinator)
                context->coordinator->finish();
            if (did)
                callBlock(completion);
        };
        const id animator = animated ? animatorFor(presented, presenter, id(&source), *presentation, false) : nil;
        if (!animator) {
            send<"setFrame:", void>(context->toView, context->finalToFrame);
            send<"addSubview:", void>(id(context->container), context->toView);
        }
        context->run(animator);
    }

    /// A presentation that wasn't completed.
    static void undo(PresentationControllerObject& presentation, const Controller& presenter,
        const Controller& presented, bool takesAway)
    {
        if (takesAway)
            presenter->beginAppearance(true, false);
        presented->beginAppearance(false, false);
        send<"presentationTransitionDidEnd:", void>(id(&presentation), false);
        leave(presented);
        presented->endAppearance();
        if (takesAway)
            presenter->endAppearance();
        part(presented);
    }

    static void leave(const Controller& presented)
    {
        const auto presentation = presented->presentation_;
        send<"removeFromSuperview", void>(send<"presentedView">(id(presentation)));
        send<"removeFromSuperview", void>(id(presentation->container));
        presentation->container = nullptr;
    }

    static void part(const Controller& presented)
    {
        if (const Controller presenter = presented->presenting_.get(); presenter && presenter->presented_ == presented)
            presenter->presented_ = nullptr;
        presented->presenting_ = nullptr;
        presented->presentation_ = nullptr;
        presented->isBeingPresented = false;
        presented->isBeingDismissed = false;
    }

    static void dismiss(const Controller& presenter, bool animated, const id& completion)
    {
        Stack stack;
        for (Controller shown = presenter->presented_; shown; shown = shownInside(*shown))
            stack.push_back(shown);
        for (const Controller& shown : stack)
            if (const auto running = shown->transition) {
                if (!running->isDismissal)
                    running->afterwards([presenter, animated, completion, first = stack.front()] {
                        if (presenter->presented_ == first)
                            dismiss(presenter, animated, completion);
                    });
                return;
            }
        const Controller top = stack.back();
        const auto presentation = top->presentation_;
        const auto context = contextOf(presentation, animated);
        context->isDismissal = true;
        context->from = top;
        context->to = presenter;
        presenter->transition = context;
        for (const Controller& shown : stack) {
            shown->transition = context;
            shown->isBeingDismissed = true;
            if (shown != top)
                send<"setHidden:", void>(id(shown->presentation_->container), true);
        }
        for (const Controller& shown : std::ranges::reverse_view(stack))
            send<"dismissalTransitionWillBegin", void>(id(shown->presentation_));
        for (const Controller& shown : std::ranges::reverse_view(stack))
            shown->beginAppearance(false, animated && shown == top);
        const bool comesBack = stack.front()->presentation_->tookPresenter();
        if (comesBack) {
            // Before its view moves, so that the move itself tells nothing.
            presenter->beginAppearance(true, animated);
            stack.front()->presentation_->bringPresenterBack();
        }
        ViewObject* const below = presenter->viewIfLoaded();
        context->fromView = send<"presentedView">(id(presentation));
        context->toView = comesBack ? id(below) : nil;
        if (const ViewObject* const leaving = asViewObject(context->fromView))
            context->initialFromFrame = context->finalFromFrame = leaving->frame();
        context->finalToFrame = below ? below->frame() : CGRect {};

        context->completion = [=, context = context.get()](bool did) {
            if (did)
                gone(stack, presenter, comesBack);
            else
                stay(stack, presenter, comesBack);
            if (context->coordinator)
                context->coordinator->finish();
            if (did)
                callBlock(completion);
        };
        context->run(animated ? animatorFor(top, presenter, nil, *presentation, true) : nil);
    }

    static void gone(const Stack& stack, const Controller& presenter, bool comesBack)
    {
        for (const Controller& shown : stack)
            shown->transition = nullptr;
        for (const Controller& shown : std::ranges::reverse_view(stack)) {
            leave(shown);
            send<"dismissalTransitionDidEnd:", void>(id(shown->presentation_), true);
        }
        if (comesBack)
            presenter->endAppearance();
        for (const Controller& shown : std::ranges::reverse_view(stack)) {
            shown->endAppearance();
            part(shown);
        }
    }

    /// A dismissal that wasn't completed.
    static void stay(const Stack& stack, const Controller& presenter, bool comesBack)
    {
        if (comesBack)
            presenter->beginAppearance(false, false);
        for (const Controller& shown : stack) {
            shown->transition = nullptr;
            shown->isBeingDismissed = false;
            shown->beginAppearance(true, false);
            send<"setHidden:", void>(id(shown->presentation_->container), false);
        }
        if (comesBack) {
            stack.front()->presentation_->takePresenterAway();
            presenter->endAppearance();
        }
        for (const Controller& shown : stack) {
            send<"dismissalTransitionDidEnd:", void>(id(shown->presentation_), false);
            shown->endAppearance();
        }
    }
};

void ViewControllerObject::present(const id& controller, bool animated, const id& completion)
{
    const Controller other(asController(controller));
    if (!other)
        throw NSException("NSInvalidArgumentException",
            "Application tried to present a nil modal view controller on target " + nameOf(*this));
    Presenting::present(*this, other, animated, completion);
}

void ViewControllerObject::dismiss(bool animated, const id& completion)
{
    for (Controller holder(this); holder; holder = holder->parent())
        if (holder->presented_)
            return Presenting::dismiss(holder, animated, completion);
    if (const Controller shower = presenting())
        Presenting::dismiss(shower, animated, completion);
}

Ref<ViewControllerObject> ViewControllerObject::presented() const
{
    for (Controller holder(const_cast<ViewControllerObject*>(this)); holder; holder = holder->parent())
        if (holder->presented_)
            return holder->presented_;
    return nullptr;
}

Ref<ViewControllerObject> ViewControllerObject::presenting() const
{
    for (Controller holder(const_cast<ViewControllerObject*>(this)); holder; holder = holder->parent())
        if (Controller shower = holder->presenting_.get())
            return shower;
    return nullptr;
}

id ViewControllerObject::presentationController()
{
    auto style = static_cast<PresentationStyle>(send<"modalPresentationStyle", NSInteger>(id(this)));
    const bool isSheet = style == PresentationStyle::PageSheet || style == PresentationStyle::FormSheet;
    if (isSheet && !isPad() && automaticStyle() != PresentationStyle::PageSheet)
        style = PresentationStyle::FullScreen;
    if (presentation_ && (presentation_->style == style || presenting_.get()))
        return presentation_;
    presentation_ = makePresentation();
    if (!presentation_ && style == PresentationStyle::Popover)
        presentation_ = makePopoverPresentation();
    else if (!presentation_ && isSheet && style != PresentationStyle::FullScreen)
        presentation_ = makeSheetPresentation(style);
    else if (!presentation_)
        presentation_ = make<PresentationControllerObject>();
    presentation_->style = style;
    presentation_->presented = Controller(this);
    return presentation_;
}

id ViewControllerObject::transitionCoordinator() const
{
    for (Controller holder(const_cast<ViewControllerObject*>(this)); holder; holder = holder->parent())
        if (holder->transition && holder->transition->coordinator)
            return holder->transition->coordinator;
    return nil;
}

} // namespace platform
