#pragma once

#include "platform/runtime/weak.h"
#include "platform/uikit/view.h"

#include <span>

namespace platform {

/// The attributes, by the system's numbers.
enum class LayoutAttribute : long {
    None = 0,
    Left = 1,
    Right = 2,
    Top = 3,
    Bottom = 4,
    Leading = 5,
    Trailing = 6,
    Width = 7,
    Height = 8,
    CenterX = 9,
    CenterY = 10,
    LastBaseline = 11,
    FirstBaseline = 12,
};

enum class LayoutRelation : long { LessThanOrEqual = -1, Equal = 0, GreaterThanOrEqual = 1 };

/// first.attribute = second.attribute * multiplier + constant (or at most, or at least that). It keeps none of its
/// views, and without one of them it says nothing.
class LayoutConstraintObject : public NSObject {
public:
    static const ClassDefinition definition;
    ~LayoutConstraintObject() override;

    Weak<ViewObject> first {};
    LayoutAttribute firstAttribute = LayoutAttribute::None;
    LayoutRelation relation = LayoutRelation::Equal;
    Weak<ViewObject> second {};
    LayoutAttribute secondAttribute = LayoutAttribute::None; ///< none: the constant alone
    double multiplier = 1;
    double constant = 0;
    float priority = 1000;
    Weak<ViewObject> owner {}; ///< the view on which it is installed; nil while it isn't active

    void setActive(bool active);
    void setConstant(double newConstant);
    void setPriority(float newPriority);

private:
    template <class T> void change(T& field, T value);
};

/// What views have for constraints: anchors and the lists.
extern const std::span<const MethodDefinition> constraintMethods;
extern const ClassDefinition NSLayoutAnchor_class;

} // namespace platform
