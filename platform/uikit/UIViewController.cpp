#include "platform/foundation/block.h"
#include "platform/runtime/message.h"
#include "platform/uikit/view_controllers.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

constexpr double levelOfPresented = 2000; // where the system has its alerts

constexpr MethodDefinition methods[] {
    method<"dismissViewControllerAnimated:completion:", &ViewControllerObject::dismiss>(),
    method<"nextResponder", &ViewControllerObject::nextResponder>(),
    method<"presentViewController:animated:completion:", &ViewControllerObject::present>(),
    getter<"presentedViewController", &ViewControllerObject::presentedViewController>(),
    setter<"setTitle:", &ViewControllerObject::title>(),
    method<"setView:", &ViewControllerObject::setView>(),
    getter<"title", &ViewControllerObject::title>(),
    method<"view", &ViewControllerObject::view>(),
};

} // namespace

const ClassDefinition ViewControllerObject::definition { .name = "UIViewController",
    .superclass = &UIResponder_class,
    .allocate = allocate<ViewControllerObject>,
    .methods = methods };

id ViewControllerObject::loadView()
{
    const Ref<ViewObject> whole = make<ViewObject>();
    whole->setFrame({ {}, screenFacts().size });
    return whole;
}

id ViewControllerObject::view()
{
    if (!view_)
        setView(loadView());
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
    return presentingViewController ? id(presentingViewController) : askObject<"superview">(view_);
}

void ViewControllerObject::present(const id& controller, bool, const id& completion)
{
    auto* const other = as<ViewControllerObject>(controller);
    if (!other || presentedViewController || other->presentingViewController)
        return;
    presentedViewController = Ref<ViewControllerObject>(other);
    other->presentingViewController = this;
    other->window_ = make<WindowObject>();
    other->window_->setFrame({ {}, screenFacts().size });
    other->window_->windowLevel = levelOfPresented;
    send<"addSubview:", void>(id(other->window_), other->view());
    send<"setHidden:", void>(id(other->window_), false);
    callBlock(completion);
}

void ViewControllerObject::dismiss(bool animated, const id& completion)
{
    if (!presentedViewController) {
        if (presentingViewController)
            presentingViewController->dismiss(animated, completion);
        return;
    }
    const Ref<ViewControllerObject> gone = std::exchange(presentedViewController, nullptr);
    if (gone->presentedViewController)
        gone->dismiss(false, nil);
    gone->presentingViewController = nullptr;
    send<"setHidden:", void>(id(gone->window_), true);
    send<"removeFromSuperview", void>(gone->view());
    gone->window_ = nullptr;
    callBlock(completion);
}

} // namespace platform
