#pragma once

#include "platform/handles/UIBlurEffect.h"
#include "platform/handles/UIView.h"

namespace platform {

class UIVisualEffectView : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIVisualEffectView">(); }
    static UIVisualEffectView withEffect(const UIBlurEffect& effect)
    {
        return initialised<UIVisualEffectView, "initWithEffect:">(effect);
    }

    UIBlurEffect effect() const { return call<"effect", UIBlurEffect>(); }
    void setEffect(const UIBlurEffect& effect) const { call<"setEffect:">(effect); }
    /// Where what stands on the effect is added.
    UIView contentView() const { return call<"contentView", UIView>(); }
};

} // namespace platform
