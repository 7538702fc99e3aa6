#pragma once

#include "platform/uikit/view.h"

#include <array>

/// Animations on the platform's clock: a value is set at once, and what is seen follows it.

namespace platform {

using AnimatedValues = std::array<double, 6>;

/// A value of the view is about to change. Inside an animation it is animated from what is seen now; outside, an
/// animation of the same value ends. An equal value changes nothing.
void noteChange(ViewObject& view, Animatable property, const AnimatedValues& former, const AnimatedValues& value);

/// What is seen of the value now.
AnimatedValues presentedValues(const ViewObject& view, Animatable property, const AnimatedValues& value);

/// Ends the animations of the view and of all views in it; their completions hear that they didn't finish.
void cancelAnimations(const ViewObject& view);
/// The same for one view that goes; nobody is called before this returns.
void forgetAnimations(const ViewObject& view) noexcept;

bool animationsRun() noexcept;

/// The values that are seen now.
struct Presentation {
    CGRect bounds;
    CGPoint center;
    CGAffineTransform transform;
    double alpha;
    std::optional<Color> backgroundColor;
    double cornerRadius;

    CGRect frame() const;
};
Presentation presentationOf(const ViewObject& view);

AnimatedValues valuesOf(const CGRect& rect);
AnimatedValues valuesOf(const CGPoint& point);
AnimatedValues valuesOf(const CGAffineTransform& transform);
AnimatedValues valuesOf(double value);
AnimatedValues valuesOfColor(const id& color);

/// The animating class methods of UIView.
extern const std::span<const MethodDefinition> animationMethods;

} // namespace platform
