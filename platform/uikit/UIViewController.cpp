#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/asking.h"
#include "platform/uikit/device.h"
#include "platform/uikit/navigation.h"
#include "platform/uikit/view_controllers.h"
#include "platform/uikit/views.h"

#include <cstdio>

namespace platform {

void complain(const std::string& sentence)
{
    std::fprintf(stderr, "%s\n", sentence.c_str());
}

std::string nameOf(const NSObject& object)
{
    return "<" + std::string(class_getName(object.isa())) + ">";
}

ViewControllerObject::ViewControllerObject() = default;

ViewControllerObject::~ViewControllerObject()
{
    for (const Ref<ViewControllerObject>& child : children_)
        child->parent_ = nullptr;
}

Ref<PresentationControllerObject> ViewControllerObject::makePresentation()
{
    return nullptr;
}

id ViewControllerObject::makeView()
{
    const Ref<ViewObject> whole = make<ViewObject>();
    whole->setFrame({ {}, screenFacts().size });
    return whole;
}

id ViewControllerObject::view()
{
    if (!view_) {
        const Ref<ViewControllerObject> self(this);
        send<"loadView", void>(id(self));
        if (view_)
            send<"viewDidLoad", void>(id(self));
    }
    return view_;
}

void ViewControllerObject::setView(const id& newView)
{
    if (ViewObject* const former = asViewObject(view_))
        former->controller = nullptr;
    view_ = newView;
    if (ViewObject* const view = asViewObject(view_))
        view->controller = id(this);
}

/// Of a presented controller the one that shows it; else what its view stands in.
id ViewControllerObject::nextResponder() const
{
    const Ref<ViewControllerObject> shower = presenting_.get();
    return shower ? id(shower) : askObject<"superview">(view_);
}

Ref<ViewControllerObject> ViewControllerObject::outermost()
{
    Ref<ViewControllerObject> controller(this);
    while (const Ref<ViewControllerObject> holder = controller->parent())
        controller = holder;
    return controller;
}

void ViewControllerObject::addChild(const id& object)
{
    const Ref<ViewControllerObject> child(asController(object));
    if (!child || child.get() == this)
        throw NSException("NSInvalidArgumentException", "A view controller can only hold another one");
    for (Ref<ViewControllerObject> holder(this); holder; holder = holder->parent())
        if (holder == child)
            throw NSException("NSInvalidArgumentException", "A view controller can't be held by one that it holds");
    if (child->parent().get() == this)
        return;
    if (child->parent())
        child->removeFromParent();
    send<"willMoveToParentViewController:", void>(id(child), id(this));
    children_.push_back(child);
    child->parent_ = Ref<ViewControllerObject>(this);
    child->isMovingToParent = true;
}

void ViewControllerObject::removeFromParent()
{
    const Ref<ViewControllerObject> self(this);
    const Ref<ViewControllerObject> holder = parent();
    if (!holder)
        return;
    std::erase(holder->children_, self);
    parent_ = nullptr;
    send<"didMoveToParentViewController:", void>(id(self), nil);
    isMovingFromParent = false;
}

void ViewControllerObject::willMoveToParent(const id& newParent)
{
    (newParent ? isMovingToParent : isMovingFromParent) = true;
}

/// The rows of the class, which may look into a controller.
struct ViewControllerMethods {
    using Controller = ViewControllerObject;
    static Controller& in(const id& self) { return static_cast<Controller&>(*self); }

    static void loadView(const id& self, SEL) { in(self).setView(in(self).makeView()); }
    static void loadViewIfNeeded(const id& self, SEL) { send<"view">(self); }
    static id view(const id& self, SEL) { return in(self).view(); }
    static void setView(const id& self, SEL, const id& view) { in(self).setView(view); }
    static bool isViewLoaded(const id& self, SEL) { return in(self).isViewLoaded(); }
    static id viewIfLoaded(const id& self, SEL) { return in(self).view_; }
    static id initWithNib(const id& self, SEL, const id&, const id&) { return send<"init">(self); }

    static void nothing(const id&, SEL) { }
    static void nothingAnimated(const id&, SEL, bool) { }
    static void nothingWith(const id&, SEL, const id&) { }
    static bool yes(const id&, SEL) { return true; }
    static bool no(const id&, SEL) { return false; }
    static id none(const id&, SEL) { return nil; }
    static NSInteger zero(const id&, SEL) { return 0; }

    static void beginAppearance(const id& self, SEL, bool appearing, bool animated)
    {
        in(self).beginAppearance(appearing, animated);
    }
    static void endAppearance(const id& self, SEL) { in(self).endAppearance(); }

    static void addChild(const id& self, SEL, const id& child) { in(self).addChild(child); }
    static id children(const id& self, SEL) { return array({ in(self).children_.begin(), in(self).children_.end() }); }
    static id parent(const id& self, SEL) { return in(self).parent(); }
    static id presented(const id& self, SEL) { return in(self).presented(); }
    static id presenting(const id& self, SEL) { return in(self).presenting(); }

    static NSInteger modalPresentationStyle(const id& self, SEL)
    {
        const PresentationStyle style = in(self).modalPresentationStyle;
        return static_cast<NSInteger>(style == PresentationStyle::Automatic ? automaticStyle() : style);
    }
    static void setModalPresentationStyle(const id& self, SEL, NSInteger style)
    {
        in(self).modalPresentationStyle = static_cast<PresentationStyle>(style);
    }
    static id transitioningDelegate(const id& self, SEL) { return in(self).transitioningDelegate.get(); }
    static void setTransitioningDelegate(const id& self, SEL, const id& delegate)
    {
        in(self).transitioningDelegate = delegate;
    }

    /// That of a controller whose style is a popover; nil for all others.
    static id popover(const id& self, SEL)
    {
        const id presentation = send<"presentationController">(self);
        return isKindOfClass(presentation, classNamed<"UIPopoverPresentationController">()) ? presentation : nil;
    }

    static void setAdditionalSafeAreaInsets(const id& self, SEL, UIEdgeInsets insets)
    {
        if (std::exchange(in(self).additionalSafeAreaInsets, insets) == insets)
            return;
        if (ViewObject* const view = in(self).viewIfLoaded())
            view->safeAreaMayHaveChanged();
    }

    static void setPreferredContentSize(const id& self, SEL, CGSize size)
    {
        if (std::exchange(in(self).preferredContentSize, size) == size)
            return;
        const id holder = in(self).parent() ? id(in(self).parent()) : id(in(self).presentation_);
        send<"preferredContentSizeDidChangeForChildContentContainer:", void>(holder, self);
    }

    static void setTitle(const id& self, SEL, const id& title)
    {
        in(self).title = title;
        send<"setTitle:", void>(in(self).navigationItem_, title);
    }
    static id navigationItem(const id& self, SEL)
    {
        if (!in(self).navigationItem_)
            in(self).navigationItem_ = makeNavigationItem(in(self).title);
        return in(self).navigationItem_;
    }
    static id navigationController(const id& self, SEL) { return navigationControllerOf(in(self)); }

    static id traitCollection(const id& self, SEL)
    {
        if (in(self).isViewLoaded())
            return send<"traitCollection">(in(self).view_);
        return send<"traitCollection">(send<"mainScreen">(id(classNamed<"UIScreen">())));
    }
    static void setOverrideStyle(const id& self, SEL, NSInteger style)
    {
        in(self).overrideStyle = style;
        if (ViewObject* const view = in(self).viewIfLoaded())
            changed(*view, Asks::Layout);
    }

    static NSUInteger supportedOrientations(const id&, SEL)
    {
        constexpr NSUInteger all = 30;
        constexpr NSUInteger allButUpsideDown = 26;
        return isPad() ? all : allButUpsideDown;
    }
    static NSInteger orientation(const id&, SEL) { return interfaceOrientation(); }
    static NSInteger portrait(const id&, SEL) { return 1; }

    static CGSize sizeForChild(const id&, SEL, const id&, CGSize size) { return size; }
    /// Those that are held or shown hear of it with the size that this one means them to have.
    static void willTransition(const id& self, SEL, CGSize size, const id& coordinator)
    {
        const std::vector<Ref<Controller>> held = in(self).children_;
        for (const Ref<Controller>& child : held)
            send<"viewWillTransitionToSize:withTransitionCoordinator:", void>(id(child),
                send<"sizeForChildContentContainer:withParentContainerSize:", CGSize>(self, id(child), size),
                coordinator);
        if (const Ref<PresentationControllerObject> shown
            = in(self).presented_ ? in(self).presented_->presentation_ : nullptr)
            send<"viewWillTransitionToSize:withTransitionCoordinator:", void>(id(shown), size, coordinator);
    }
};

namespace {

using Methods = ViewControllerMethods;

constexpr MethodDefinition methods[] {
    method<"addChildViewController:", &Methods::addChild>(),
    getter<"additionalSafeAreaInsets", &ViewControllerObject::additionalSafeAreaInsets>(),
    method<"beginAppearanceTransition:animated:", &Methods::beginAppearance>(),
    method<"childViewControllerForStatusBarHidden", &Methods::none>(),
    method<"childViewControllerForStatusBarStyle", &Methods::none>(),
    method<"childViewControllers", &Methods::children>(),
    getter<"definesPresentationContext", &ViewControllerObject::definesPresentationContext>(),
    method<"didMoveToParentViewController:", &Methods::nothingWith>(),
    method<"dismissViewControllerAnimated:completion:", &ViewControllerObject::dismiss>(),
    method<"endAppearanceTransition", &Methods::endAppearance>(),
    method<"initWithNibName:bundle:", &Methods::initWithNib>(),
    method<"interfaceOrientation", &Methods::orientation>(),
    getter<"isBeingDismissed", &ViewControllerObject::isBeingDismissed>(),
    getter<"isBeingPresented", &ViewControllerObject::isBeingPresented>(),
    getter<"isModalInPresentation", &ViewControllerObject::isModalInPresentation>(),
    getter<"isMovingFromParentViewController", &ViewControllerObject::isMovingFromParent>(),
    getter<"isMovingToParentViewController", &ViewControllerObject::isMovingToParent>(),
    method<"isViewLoaded", &Methods::isViewLoaded>(),
    method<"loadView", &Methods::loadView>(),
    method<"loadViewIfNeeded", &Methods::loadViewIfNeeded>(),
    method<"modalPresentationStyle", &Methods::modalPresentationStyle>(),
    getter<"modalTransitionStyle", &ViewControllerObject::modalTransitionStyle>(),
    method<"navigationController", &Methods::navigationController>(),
    method<"navigationItem", &Methods::navigationItem>(),
    method<"nextResponder", &ViewControllerObject::nextResponder>(),
    method<"parentViewController", &Methods::parent>(),
    getter<"preferredContentSize", &ViewControllerObject::preferredContentSize>(),
    getter<"overrideUserInterfaceStyle", &ViewControllerObject::overrideStyle>(),
    method<"popoverPresentationController", &Methods::popover>(),
    method<"preferredContentSizeDidChangeForChildContentContainer:", &Methods::nothingWith>(),
    method<"preferredInterfaceOrientationForPresentation", &Methods::portrait>(),
    method<"preferredStatusBarStyle", &Methods::zero>(),
    method<"prefersStatusBarHidden", &Methods::no>(),
    method<"presentViewController:animated:completion:", &ViewControllerObject::present>(),
    method<"presentationController", &ViewControllerObject::presentationController>(),
    method<"presentedViewController", &Methods::presented>(),
    method<"presentingViewController", &Methods::presenting>(),
    method<"removeFromParentViewController", &ViewControllerObject::removeFromParent>(),
    method<"setAdditionalSafeAreaInsets:", &Methods::setAdditionalSafeAreaInsets>(),
    setter<"setDefinesPresentationContext:", &ViewControllerObject::definesPresentationContext>(),
    setter<"setModalInPresentation:", &ViewControllerObject::isModalInPresentation>(),
    method<"setModalPresentationStyle:", &Methods::setModalPresentationStyle>(),
    setter<"setModalTransitionStyle:", &ViewControllerObject::modalTransitionStyle>(),
    method<"setNeedsStatusBarAppearanceUpdate", &Methods::nothing>(),
    method<"setOverrideUserInterfaceStyle:", &Methods::setOverrideStyle>().since(13),
    method<"setPreferredContentSize:", &Methods::setPreferredContentSize>(),
    method<"setTitle:", &Methods::setTitle>(),
    method<"setTransitioningDelegate:", &Methods::setTransitioningDelegate>(),
    method<"setView:", &Methods::setView>(),
    method<"shouldAutomaticallyForwardAppearanceMethods", &Methods::yes>(),
    method<"shouldAutorotate", &Methods::yes>(),
    method<"sizeForChildContentContainer:withParentContainerSize:", &Methods::sizeForChild>(),
    method<"supportedInterfaceOrientations", &Methods::supportedOrientations>(),
    getter<"title", &ViewControllerObject::title>(),
    method<"traitCollection", &Methods::traitCollection>(),
    method<"traitCollectionDidChange:", &Methods::nothingWith>(),
    method<"transitionCoordinator", &ViewControllerObject::transitionCoordinator>(),
    method<"transitioningDelegate", &Methods::transitioningDelegate>(),
    method<"view", &Methods::view>(),
    method<"viewDidAppear:", &Methods::nothingAnimated>(),
    method<"viewDidDisappear:", &Methods::nothingAnimated>(),
    method<"viewDidLayoutSubviews", &Methods::nothing>(),
    method<"viewDidLoad", &Methods::nothing>(),
    method<"viewIfLoaded", &Methods::viewIfLoaded>(),
    method<"viewSafeAreaInsetsDidChange", &Methods::nothing>(),
    method<"viewWillAppear:", &Methods::nothingAnimated>(),
    method<"viewWillDisappear:", &Methods::nothingAnimated>(),
    method<"viewWillLayoutSubviews", &Methods::nothing>(),
    method<"viewWillTransitionToSize:withTransitionCoordinator:", &Methods::willTransition>(),
    method<"willMoveToParentViewController:", &ViewControllerObject::willMoveToParent>(),
};

} // namespace

const ClassDefinition ViewControllerObject::definition { .name = "UIViewController",
    .superclass = &UIResponder_class,
    .allocate = allocate<ViewControllerObject>,
    .methods = methods };

} // namespace platform
