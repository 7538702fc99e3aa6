#pragma once

#include "platform/handles/UIView.h"

namespace platform {

enum class UILayoutConstraintAxis : NSInteger { Horizontal = 0, Vertical = 1 };
enum class UIStackViewAlignment : NSInteger { Fill = 0, Leading = 1, Center = 3, Trailing = 4 };
enum class UIStackViewDistribution : NSInteger {
    Fill = 0,
    FillEqually = 1,
    FillProportionally = 2,
    EqualSpacing = 3,
};

class UIStackView : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIStackView">(); }
    static UIStackView create() { return created<UIStackView>(); }

    void addArrangedSubview(const UIView& view) const { call<"addArrangedSubview:">(view); }
    void setAxis(UILayoutConstraintAxis axis) const { call<"setAxis:">(axis); }
    void setAlignment(UIStackViewAlignment alignment) const { call<"setAlignment:">(alignment); }
    void setDistribution(UIStackViewDistribution distribution) const { call<"setDistribution:">(distribution); }
    void setSpacing(CGFloat spacing) const { call<"setSpacing:">(spacing); }
    void setLayoutMargins(const UIEdgeInsets& margins) const { call<"setLayoutMargins:">(margins); }
    void setLayoutMarginsRelativeArrangement(bool relative) const
    {
        call<"setLayoutMarginsRelativeArrangement:">(relative);
    }
};

} // namespace platform
