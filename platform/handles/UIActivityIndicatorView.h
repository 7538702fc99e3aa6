#pragma once

#include "platform/handles/UIView.h"

namespace platform {

enum class UIActivityIndicatorViewStyle : NSInteger { WhiteLarge = 0, White = 1, Gray = 2, Medium = 100, Large = 101 };

class UIActivityIndicatorView : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIActivityIndicatorView">(); }
    static UIActivityIndicatorView withStyle(UIActivityIndicatorViewStyle style)
    {
        return initialised<UIActivityIndicatorView, "initWithActivityIndicatorStyle:">(style);
    }

    void startAnimating() const { call<"startAnimating">(); }
    void stopAnimating() const { call<"stopAnimating">(); }
    bool isAnimating() const { return call<"isAnimating", bool>(); }
    void setColor(const UIColor& color) const { call<"setColor:">(color); }
    void setHidesWhenStopped(bool hides) const { call<"setHidesWhenStopped:">(hides); }
};

} // namespace platform
