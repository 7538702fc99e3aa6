#pragma once

#include "platform/handles/UIView.h"

namespace platform {

class UIPresentationController : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIPresentationController">(); }

    UIView containerView() const { return call<"containerView", UIView>(); }
    UIView presentedView() const { return call<"presentedView", UIView>(); }
    CGRect frameOfPresentedViewInContainerView() const { return call<"frameOfPresentedViewInContainerView", CGRect>(); }
    void setDelegate(const id& delegate) const { call<"setDelegate:">(delegate); }
};

} // namespace platform
