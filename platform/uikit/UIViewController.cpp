#include "platform/foundation/block.h"
#include "platform/runtime/message.h"
#include "platform/uikit/view_controllers.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

constexpr double levelOfPresented = 2000; // where the system has its alerts

constexpr MethodDefinition methods[] {
    method<"dismissViewControllerAnimated:completion:", &UIViewController::dismiss>(),
    method<"presentViewController:animated:completion:", &UIViewController::present>(),
    getter<"presentedViewController", &UIViewController::presentedViewController>(),
    setter<"setTitle:", &UIViewController::title>(),
    method<"setView:", &UIViewController::setView>(),
    getter<"title", &UIViewController::title>(),
    method<"view", &UIViewController::view>(),
};

} // namespace

const ClassDefinition UIViewController::definition { .name = "UIViewController",
    .superclass = &UIResponder_class,
    .allocate = allocate<UIViewController>,
    .methods = methods };

id UIViewController::loadView()
{
    const Ref<UIView> whole = make<UIView>();
    whole->setFrame({ {}, screenFacts().size });
    return whole;
}

id UIViewController::view()
{
    if (!view_)
        view_ = loadView();
    return view_;
}

void UIViewController::present(const id& controller, bool, const id& completion)
{
    auto* const other = as<UIViewController>(controller);
    if (!other || presentedViewController || other->presentingViewController)
        return;
    presentedViewController = Ref<UIViewController>(other);
    other->presentingViewController = this;
    other->window_ = make<UIWindow>();
    other->window_->setFrame({ {}, screenFacts().size });
    other->window_->windowLevel = levelOfPresented;
    send<"addSubview:", void>(id(other->window_), other->view());
    send<"setHidden:", void>(id(other->window_), false);
    callBlock(completion);
}

void UIViewController::dismiss(bool animated, const id& completion)
{
    if (!presentedViewController) {
        if (presentingViewController)
            presentingViewController->dismiss(animated, completion);
        return;
    }
    const Ref<UIViewController> gone = std::exchange(presentedViewController, nullptr);
    if (gone->presentedViewController)
        gone->dismiss(false, nil);
    gone->presentingViewController = nullptr;
    send<"setHidden:", void>(id(gone->window_), true);
    send<"removeFromSuperview", void>(gone->view());
    gone->window_ = nullptr;
    callBlock(completion);
}

} // namespace platform
