#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIView.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/navigation.h"

#include <algorithm>

namespace platform {

namespace {

using Controller = Ref<ViewControllerObject>;

constexpr double edgeWidth = 20;

NavigationItemObject* itemOf(const Controller& controller)
{
    const id item = send<"navigationItem">(id(controller));
    return as<NavigationItemObject>(item);
}

} // namespace

NavigationBarObject& NavigationControllerObject::bar()
{
    if (!bar_) {
        const id made = send<"new">(id(classNamed<"UINavigationBar">()));
        bar_ = Ref<NavigationBarObject>(as<NavigationBarObject>(made));
        bar_->navigation = id(this);
    }
    return *bar_;
}

id NavigationControllerObject::edgeGesture()
{
    if (!edge_) {
        edge_ = send<"initWithTarget:action:">(
            send<"alloc">(id(classNamed<"UIPanGestureRecognizer">())), id(this), sel_registerName("_edgeSwiped:"));
        send<"setDelegate:", void>(edge_, id(this));
    }
    return edge_;
}

id NavigationControllerObject::makeView()
{
    id whole = ViewControllerObject::makeView();
    content_ = make<ViewObject>();
    content_->setFrame(asViewObject(whole)->bounds);
    constexpr NSUInteger flexibleWidthAndHeight = 2 | 16;
    content_->autoresizingMask = flexibleWidthAndHeight;
    send<"addSubview:", void>(whole, id(content_));
    send<"addSubview:", void>(whole, id(&bar()));
    send<"addGestureRecognizer:", void>(whole, edgeGesture());
    if (const Controller shown = top()) {
        place(*shown);
        send<"addSubview:", void>(id(content_), send<"view">(id(shown)));
    }
    updateBar();
    return whole;
}

/// The content reaches under the bar, which its safe area says.
void NavigationControllerObject::place(ViewControllerObject& controller)
{
    send<"view">(id(&controller)); // what it does when it is loaded may give the bar a search
    const UIEdgeInsets insets { isBarHidden_ ? 0 : bar().height(), 0, 0, 0 };
    const bool differ = std::exchange(controller.containerInsets, insets) != insets;
    ViewObject* const view = controller.viewIfLoaded();
    if (!view || !content_)
        return;
    constexpr NSUInteger flexibleWidthAndHeight = 2 | 16;
    view->autoresizingMask = flexibleWidthAndHeight;
    platform::place(*view, content_->bounds);
    if (differ)
        view->safeAreaMayHaveChanged();
}

void NavigationControllerObject::layOut()
{
    ViewObject* const whole = viewIfLoaded();
    if (!whole || !bar_)
        return;
    const double height = whole->safeArea().top + bar_->height() - bar_->collapsed();
    platform::place(*bar_, CGRectMake(0, 0, whole->bounds.size.width, height));
    bar_->setNeedsLayout();
    send<"setHidden:", void>(id(bar_), isBarHidden_);
}

void NavigationControllerObject::updateBar()
{
    std::vector<Ref<NavigationItemObject>> items;
    for (const Controller& controller : stack_)
        if (NavigationItemObject* const item = itemOf(controller))
            items.emplace_back(item);
    bar().setItems(items);
    layOut();
}

void NavigationControllerObject::setBarHidden(bool hidden, bool)
{
    if (std::exchange(isBarHidden_, hidden) == hidden)
        return;
    if (const Controller shown = top(); shown && isViewLoaded())
        place(*shown);
    layOut();
}

void NavigationControllerObject::push(const Controller& controller, bool animated)
{
    if (!controller)
        throw NSException(
            "NSInvalidArgumentException", "Application tried to push a nil view controller on target " + nameOf(*this));
    if (std::ranges::find(stack_, controller) != stack_.end()
        || dynamic_cast<NavigationControllerObject*>(controller.get()))
        throw NSException("NSInvalidArgumentException",
            "Pushing " + nameOf(*controller) + ": it stands in the stack already, or is a navigation controller");
    const Controller former = top();
    addChild(id(controller));
    stack_.push_back(controller);
    updateBar();
    show(former, controller, Operation::Push, animated, [] {});
}

std::vector<id> NavigationControllerObject::popTo(std::size_t count, bool animated)
{
    if (count == 0 || count >= stack_.size())
        return {};
    const std::vector<Controller> gone(stack_.begin() + static_cast<std::ptrdiff_t>(count), stack_.end());
    stack_.resize(count);
    for (const Controller& controller : gone)
        send<"willMoveToParentViewController:", void>(id(controller), nil);
    updateBar();
    show(gone.back(), top(), Operation::Pop, animated, [gone] {
        for (const Controller& controller : gone)
            send<"removeFromParentViewController", void>(id(controller));
    });
    return { gone.begin(), gone.end() };
}

void NavigationControllerObject::setControllers(const std::vector<Controller>& next, bool animated)
{
    const Controller former = top();
    const std::vector<Controller> before = std::exchange(stack_, next);
    std::vector<Controller> gone;
    for (const Controller& controller : before)
        if (std::ranges::find(next, controller) == next.end())
            gone.push_back(controller);
    for (const Controller& controller : gone)
        send<"willMoveToParentViewController:", void>(id(controller), nil);
    for (const Controller& controller : next)
        if (std::ranges::find(before, controller) == before.end())
            addChild(id(controller));
    updateBar();
    const bool isKnown = std::ranges::find(before, top()) != before.end();
    const auto leave = [gone] {
        for (const Controller& controller : gone)
            send<"removeFromParentViewController", void>(id(controller));
    };
    if (top() == former || !top()) {
        if (former && !top() && former->viewIfLoaded())
            former->viewIfLoaded()->removeFromSuperview();
        return leave();
    }
    show(former, top(), isKnown ? Operation::Pop : Operation::Push, animated, leave);
}

void NavigationControllerObject::show(
    const Controller& from, const Controller& to, Operation operation, bool animated, std::function<void()> gone)
{
    const Ref<NavigationControllerObject> self(this);
    const auto arrived = [self, to, operation, gone = std::move(gone)] {
        gone();
        if (operation == Operation::Push)
            send<"didMoveToParentViewController:", void>(id(to), id(self));
    };
    if (!isViewLoaded())
        return arrived();
    // One transition after the other.
    if (transition && transition->container == content_) {
        transition->complete(true);
        UIView(send<"view">(id(from))).layer().setShadowOpacity(0);
    }
    place(*to);
    ViewObject* const toView = to->viewIfLoaded();
    ViewObject* const fromView = from ? from->viewIfLoaded() : nullptr;
    const bool isSeen = appearance() == Appearance::Appeared || appearance() == Appearance::Appearing;
    ask<"navigationController:willShowViewController:animated:", void>(delegate.get(), id(self), id(to), animated);
    if (!from || from == to || !fromView) {
        send<"addSubview:", void>(id(content_), id(toView));
        arrived();
        ask<"navigationController:didShowViewController:animated:", void>(delegate.get(), id(self), id(to), false);
        return;
    }
    const auto context = make<TransitionContextObject>();
    context->container = content_;
    context->from = from;
    context->to = to;
    context->fromView = id(fromView);
    context->toView = id(toView);
    context->isAnimated = animated && isSeen;
    context->initialFromFrame = content_->bounds;
    context->finalToFrame = content_->bounds;
    if (context->isAnimated) {
        context->coordinator = make<CoordinatorObject>();
        context->coordinator->context = context;
    }
    transition = context;
    if (isSeen) {
        from->beginAppearance(false, context->isAnimated);
        to->beginAppearance(true, context->isAnimated);
    }
    if (operation == Operation::Push)
        send<"addSubview:", void>(id(content_), id(toView));
    else
        send<"insertSubview:belowSubview:", void>(id(content_), id(toView), id(fromView));
    context->completion = [=, context = context.get()](bool did) {
        if (self->transition.get() == context)
            self->transition = nullptr;
        const Ref<ViewObject> kept(fromView);
        send<"setFrame:", void>(id(toView), self->content_->bounds);
        kept->removeFromSuperview();
        if (isSeen) {
            from->endAppearance();
            to->endAppearance();
        }
        arrived();
        if (context->coordinator)
            context->coordinator->finish();
        ask<"navigationController:didShowViewController:animated:", void>(
            self->delegate.get(), id(self), id(to), did && context->isAnimated);
    };
    id animator;
    if (context->isAnimated) {
        animator
            = askObject<"navigationController:animationControllerForOperation:fromViewController:toViewController:">(
                delegate.get(), id(self), operation, id(from), id(to));
        if (!animator)
            animator = makeNavigationSlide(operation == Operation::Pop);
    }
    context->run(animator);
}

void NavigationControllerObject::goBack()
{
    if (stack_.size() > 1)
        send<"popViewControllerAnimated:">(id(this), true);
}

/// At the edge at which what is above came in.
bool NavigationControllerObject::edgeShouldBegin(const id& gesture)
{
    if (gesture != edge_)
        return true;
    if (stack_.size() < 2 || (transition && transition->container == content_))
        return false;
    const CGPoint translation = send<"translationInView:", CGPoint>(gesture, shownView());
    const double start = send<"locationInView:", CGPoint>(gesture, shownView()).x - translation.x;
    const bool mirrored = runsRightToLeft(*viewIfLoaded());
    const double width = asViewObject(shownView())->bounds.size.width;
    return mirrored ? start >= width - edgeWidth && translation.x < 0 : start <= edgeWidth && translation.x > 0;
}

/// The finger draws what is above aside; past the middle, or at speed, it goes, else it comes back.
void NavigationControllerObject::edgeSwiped(const id& gesture)
{
    enum : NSInteger { Began = 1, Changed = 2, Ended = 3 };
    const auto state = send<"state", NSInteger>(gesture);
    const Controller above = top();
    ViewObject* const moving = above ? above->viewIfLoaded() : nullptr;
    if (!moving || stack_.size() < 2)
        return;
    const bool mirrored = runsRightToLeft(*viewIfLoaded());
    const double width = content_->bounds.size.width;
    const double sign = mirrored ? -1 : 1;
    const double along = std::clamp(sign * send<"translationInView:", CGPoint>(gesture, shownView()).x, 0.0, width);
    const Controller below = stack_[stack_.size() - 2];
    if (state == Began) {
        isDragged_ = true;
        place(*below);
        above->beginAppearance(false, true);
        below->beginAppearance(true, true);
        send<"insertSubview:belowSubview:", void>(id(content_), id(below->viewIfLoaded()), id(moving));
    }
    if (!isDragged_)
        return;
    const auto stand = [=, this](double at) {
        send<"setFrame:", void>(id(moving), CGRectOffset(content_->bounds, sign * at, 0));
        send<"setFrame:", void>(
            id(below->viewIfLoaded()), CGRectOffset(content_->bounds, -sign * navigationParallax * (width - at), 0));
    };
    if (state == Began || state == Changed)
        return stand(along);
    isDragged_ = false;
    constexpr double quick = 300;
    const double speed = sign * send<"velocityInView:", CGPoint>(gesture, shownView()).x;
    const bool goes = state == Ended && (speed > quick || (along > width / 2 && speed > -quick));
    const Ref<NavigationControllerObject> self(this);
    UIView::animate(
        navigationDuration / 2, [stand, goes, width] { stand(goes ? width : 0); },
        [self, above, below, goes](bool) {
            const Controller gone = goes ? above : below;
            if (goes) {
                std::erase(self->stack_, above);
                send<"willMoveToParentViewController:", void>(id(above), nil);
            } else {
                above->beginAppearance(true, true);
                below->beginAppearance(false, true);
            }
            gone->viewIfLoaded()->removeFromSuperview();
            gone->endAppearance();
            (goes ? below : above)->endAppearance();
            if (goes)
                send<"removeFromParentViewController", void>(id(above));
            self->updateBar();
        });
}

namespace {

NavigationControllerObject& navigationIn(const id& self)
{
    return static_cast<NavigationControllerObject&>(*self);
}

id initWithRoot(const id& self, SEL, const id& root)
{
    if (ViewControllerObject* const controller = asController(root))
        navigationIn(self).push(Controller(controller), false);
    return self;
}

void push(const id& self, SEL, const id& controller, bool animated)
{
    navigationIn(self).push(Controller(asController(controller)), animated);
}

id pop(const id& self, SEL, bool animated)
{
    const std::size_t count = navigationIn(self).controllers().size();
    const std::vector<id> gone = count > 1 ? navigationIn(self).popTo(count - 1, animated) : std::vector<id>();
    return gone.empty() ? id() : gone.front();
}

id popToRoot(const id& self, SEL, bool animated)
{
    return array(navigationIn(self).popTo(1, animated));
}

id popToController(const id& self, SEL, const id& controller, bool animated)
{
    const auto& stack = navigationIn(self).controllers();
    const auto found = std::ranges::find(stack, controller, [](const Controller& known) { return id(known); });
    if (found == stack.end())
        throw NSException("NSInvalidArgumentException", "Tried to pop to a view controller that isn't in the stack");
    return array(navigationIn(self).popTo(static_cast<std::size_t>(found - stack.begin()) + 1, animated));
}

id controllers(const id& self, SEL)
{
    const auto& stack = navigationIn(self).controllers();
    return array({ stack.begin(), stack.end() });
}

void setControllersAnimated(const id& self, SEL, const id& list, bool animated)
{
    std::vector<Controller> next;
    const ArrayValue items = itemsOf(list);
    for (const id& item : items)
        if (ViewControllerObject* const controller = asController(item))
            next.emplace_back(controller);
    navigationIn(self).setControllers(next, animated);
}

void setControllers(const id& self, SEL cmd, const id& list)
{
    setControllersAnimated(self, cmd, list, false);
}

id topController(const id& self, SEL)
{
    return navigationIn(self).top();
}

id visibleController(const id& self, SEL)
{
    const id shown = send<"presentedViewController">(self);
    return shown ? shown : id(navigationIn(self).top());
}

id navigationBar(const id& self, SEL)
{
    return id(&navigationIn(self).bar());
}

void setBarHidden(const id& self, SEL, bool hidden)
{
    navigationIn(self).setBarHidden(hidden, false);
}

id delegate(const id& self, SEL)
{
    return navigationIn(self).delegate.get();
}

void setDelegate(const id& self, SEL, const id& delegate)
{
    navigationIn(self).delegate = delegate;
}

void layOut(const id& self, SEL)
{
    navigationIn(self).layOut();
}

constexpr MethodDefinition methods[] {
    method<"_edgeSwiped:", &NavigationControllerObject::edgeSwiped>(),
    method<"_goBack", &NavigationControllerObject::goBack>(),
    method<"_searchChanged", &NavigationControllerObject::searchChanged>(),
    method<"childViewControllerForStatusBarHidden", &topController>(),
    method<"childViewControllerForStatusBarStyle", &topController>(),
    method<"delegate", &delegate>(),
    method<"gestureRecognizerShouldBegin:", &NavigationControllerObject::edgeShouldBegin>(),
    method<"initWithRootViewController:", &initWithRoot>(),
    method<"interactivePopGestureRecognizer", &NavigationControllerObject::edgeGesture>(),
    method<"isNavigationBarHidden", &NavigationControllerObject::isBarHidden>(),
    method<"navigationBar", &navigationBar>(),
    method<"popToRootViewControllerAnimated:", &popToRoot>(),
    method<"popToViewController:animated:", &popToController>(),
    method<"popViewControllerAnimated:", &pop>(),
    method<"pushViewController:animated:", &push>(),
    method<"setDelegate:", &setDelegate>(),
    method<"setNavigationBarHidden:", &setBarHidden>(),
    method<"setNavigationBarHidden:animated:", &NavigationControllerObject::setBarHidden>(),
    method<"setViewControllers:", &setControllers>(),
    method<"setViewControllers:animated:", &setControllersAnimated>(),
    method<"topViewController", &topController>(),
    method<"viewControllers", &controllers>(),
    method<"viewSafeAreaInsetsDidChange", &layOut>(),
    method<"viewWillLayoutSubviews", &layOut>(),
    method<"visibleViewController", &visibleController>(),
};

} // namespace

const ClassDefinition NavigationControllerObject::definition { .name = "UINavigationController",
    .superclass = &ViewControllerObject::definition,
    .allocate = allocate<NavigationControllerObject>,
    .methods = methods };

id navigationControllerOf(const ViewControllerObject& controller)
{
    for (Controller holder = controller.parent(); holder; holder = holder->parent())
        if (dynamic_cast<NavigationControllerObject*>(holder.get()))
            return holder;
    return nil;
}

id makeNavigationItem(const id& title)
{
    const Ref<NavigationItemObject> item = make<NavigationItemObject>();
    item->title = title;
    return item;
}

} // namespace platform
