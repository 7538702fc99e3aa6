#pragma once

#include "platform/handles/UIView.h"

namespace platform {

class UIWindow : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIWindow">(); }
    static UIWindow create() { return created<UIWindow>(); }
    static UIWindow withFrame(const CGRect& frame) { return initialised<UIWindow, "initWithFrame:">(frame); }

    CGFloat windowLevel() const { return call<"windowLevel", CGFloat>(); }
    void setWindowLevel(CGFloat level) const { call<"setWindowLevel:">(level); }
    void makeKeyAndVisible() const { call<"makeKeyAndVisible">(); }
};

inline UIWindow UIView::window() const
{
    return call<"window", UIWindow>();
}

} // namespace platform
