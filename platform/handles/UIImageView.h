#pragma once

#include "platform/handles/UIImage.h"
#include "platform/handles/UIView.h"

namespace platform {

class UIImageView : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIImageView">(); }
    static UIImageView create() { return created<UIImageView>(); }
    static UIImageView withFrame(const CGRect& frame) { return initialised<UIImageView, "initWithFrame:">(frame); }
    static UIImageView withImage(const UIImage& image) { return initialised<UIImageView, "initWithImage:">(image); }

    UIImage image() const { return call<"image", UIImage>(); }
    void setImage(const UIImage& image) const { call<"setImage:">(image); }
};

} // namespace platform
