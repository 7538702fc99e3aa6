#pragma once

#include "platform/handles/UIViewController.h"

namespace platform {

class UINavigationController : public UIViewController {
public:
    using UIViewController::UIViewController;
    static Class classObject() { return classNamed<"UINavigationController">(); }
    static UINavigationController withRootViewController(const UIViewController& root)
    {
        return initialised<UINavigationController, "initWithRootViewController:">(root);
    }

    UIView navigationBar() const { return call<"navigationBar", UIView>(); }
    UIViewController topViewController() const { return call<"topViewController", UIViewController>(); }
    void push(const UIViewController& controller, bool animated) const
    {
        call<"pushViewController:animated:">(controller, animated);
    }
    UIViewController pop(bool animated) const { return call<"popViewControllerAnimated:", UIViewController>(animated); }
    id popToRoot(bool animated) const { return call<"popToRootViewControllerAnimated:", id>(animated); }
    void setNavigationBarHidden(bool hidden, bool animated) const
    {
        call<"setNavigationBarHidden:animated:">(hidden, animated);
    }
};

} // namespace platform
