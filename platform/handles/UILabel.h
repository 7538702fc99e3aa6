#pragma once

#include "platform/handles/UIFont.h"
#include "platform/handles/UIView.h"

namespace platform {

enum class NSTextAlignment : NSInteger { Left = 0, Center = 1, Right = 2, Justified = 3, Natural = 4 };

enum class NSLineBreakMode : NSInteger {
    WordWrapping = 0,
    CharWrapping = 1,
    Clipping = 2,
    TruncatingHead = 3,
    TruncatingTail = 4,
    TruncatingMiddle = 5,
};

class UILabel : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UILabel">(); }
    static UILabel create() { return created<UILabel>(); }
    static UILabel withFrame(const CGRect& frame) { return initialised<UILabel, "initWithFrame:">(frame); }

    id text() const { return call<"text", id>(); }
    void setText(const id& text) const { call<"setText:">(text); }
    UIFont font() const { return call<"font", UIFont>(); }
    void setFont(const UIFont& font) const { call<"setFont:">(font); }
    void setTextColor(const UIColor& color) const { call<"setTextColor:">(color); }
    void setTextAlignment(NSTextAlignment alignment) const { call<"setTextAlignment:">(alignment); }
    void setNumberOfLines(NSInteger lines) const { call<"setNumberOfLines:">(lines); }
    void setLineBreakMode(NSLineBreakMode mode) const { call<"setLineBreakMode:">(mode); }
    void setAdjustsFontSizeToFitWidth(bool adjusts) const { call<"setAdjustsFontSizeToFitWidth:">(adjusts); }
};

} // namespace platform
