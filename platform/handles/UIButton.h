#pragma once

#include "platform/handles/UIControl.h"
#include "platform/handles/UIImageView.h"
#include "platform/handles/UILabel.h"

namespace platform {

enum class UIButtonType : NSInteger {
    Custom = 0,
    System = 1,
    DetailDisclosure = 2,
    InfoLight = 3,
    InfoDark = 4,
    ContactAdd = 5,
};

class UIButton : public UIControl {
public:
    using UIControl::UIControl;
    static Class classObject() { return classNamed<"UIButton">(); }
    static UIButton withType(UIButtonType type) { return callOn<"buttonWithType:", UIButton>(id(classObject()), type); }

    UILabel titleLabel() const { return call<"titleLabel", UILabel>(); }
    UIImageView imageView() const { return call<"imageView", UIImageView>(); }
    id currentTitle() const { return call<"currentTitle", id>(); }
    void setTitle(const id& title, UIControlState state) const { call<"setTitle:forState:">(title, state); }
    void setTitleColor(const UIColor& color, UIControlState state) const
    {
        call<"setTitleColor:forState:">(color, state);
    }
    void setImage(const UIImage& image, UIControlState state) const { call<"setImage:forState:">(image, state); }
    void setBackgroundImage(const UIImage& image, UIControlState state) const
    {
        call<"setBackgroundImage:forState:">(image, state);
    }
    void setContentEdgeInsets(const UIEdgeInsets& insets) const { call<"setContentEdgeInsets:">(insets); }
    void setTitleEdgeInsets(const UIEdgeInsets& insets) const { call<"setTitleEdgeInsets:">(insets); }
    void setImageEdgeInsets(const UIEdgeInsets& insets) const { call<"setImageEdgeInsets:">(insets); }
};

} // namespace platform
