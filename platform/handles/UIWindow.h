#pragma once

#include "platform/handles/UIViewController.h"

namespace platform {

inline constexpr CGFloat UIWindowLevelNormal = 0;
inline constexpr CGFloat UIWindowLevelStatusBar = 1000;
inline constexpr CGFloat UIWindowLevelAlert = 2000;

class UIWindow : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIWindow">(); }
    static UIWindow create() { return created<UIWindow>(); }
    static UIWindow withFrame(const CGRect& frame) { return initialised<UIWindow, "initWithFrame:">(frame); }

    CGFloat windowLevel() const { return call<"windowLevel", CGFloat>(); }
    void setWindowLevel(CGFloat level) const { call<"setWindowLevel:">(level); }
    UIViewController rootViewController() const { return call<"rootViewController", UIViewController>(); }
    void setRootViewController(const UIViewController& root) const { call<"setRootViewController:">(root); }
    bool isKeyWindow() const { return call<"isKeyWindow", bool>(); }
    void makeKeyWindow() const { call<"makeKeyWindow">(); }
    void makeKeyAndVisible() const { call<"makeKeyAndVisible">(); }
};

inline UIWindow UIView::window() const
{
    return call<"window", UIWindow>();
}

} // namespace platform
