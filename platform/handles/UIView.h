#pragma once

#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/handles/CALayer.h"
#include "platform/handles/NSLayoutAnchor.h"
#include "platform/handles/UIColor.h"
#include "platform/handles/UIResponder.h"

#include <vector>

namespace platform {

class UIGestureRecognizer;
class UIWindow;

enum class UIViewContentMode : NSInteger {
    ScaleToFill = 0,
    ScaleAspectFit = 1,
    ScaleAspectFill = 2,
    Center = 4,
    Top = 5,
    Bottom = 6,
    Left = 7,
    Right = 8,
    TopLeft = 9,
    TopRight = 10,
    BottomLeft = 11,
    BottomRight = 12,
};

/// Which of a view's distances give way when its superview changes its size; to be joined.
enum class UIViewAutoresizing : NSUInteger {
    None = 0,
    FlexibleLeftMargin = 1,
    FlexibleWidth = 2,
    FlexibleRightMargin = 4,
    FlexibleTopMargin = 8,
    FlexibleHeight = 16,
    FlexibleBottomMargin = 32,
};
constexpr UIViewAutoresizing operator|(UIViewAutoresizing left, UIViewAutoresizing right) noexcept
{
    return static_cast<UIViewAutoresizing>(static_cast<NSUInteger>(left) | static_cast<NSUInteger>(right));
}

/// How an animation's speed goes.
enum class UIViewAnimationOptions : NSUInteger {
    CurveEaseInOut = 0,
    CurveEaseIn = 1 << 16,
    CurveEaseOut = 2 << 16,
    CurveLinear = 3 << 16,
};

class UIView : public UIResponder {
public:
    using UIResponder::UIResponder;
    static Class classObject() { return classNamed<"UIView">(); }
    static UIView create() { return created<UIView>(); }
    static UIView withFrame(const CGRect& frame) { return initialised<UIView, "initWithFrame:">(frame); }

    CALayer layer() const { return call<"layer", CALayer>(); }
    CGRect frame() const { return call<"frame", CGRect>(); }
    void setFrame(const CGRect& frame) const { call<"setFrame:">(frame); }
    CGRect bounds() const { return call<"bounds", CGRect>(); }
    void setBounds(const CGRect& bounds) const { call<"setBounds:">(bounds); }
    CGPoint center() const { return call<"center", CGPoint>(); }
    void setCenter(CGPoint center) const { call<"setCenter:">(center); }
    CGAffineTransform transform() const { return call<"transform", CGAffineTransform>(); }
    void setTransform(const CGAffineTransform& transform) const { call<"setTransform:">(transform); }
    CGFloat alpha() const { return call<"alpha", CGFloat>(); }
    void setAlpha(CGFloat alpha) const { call<"setAlpha:">(alpha); }
    bool isHidden() const { return call<"isHidden", bool>(); }
    void setHidden(bool hidden) const { call<"setHidden:">(hidden); }
    void setBackgroundColor(const UIColor& color) const { call<"setBackgroundColor:">(color); }
    void setTintColor(const UIColor& color) const { call<"setTintColor:">(color); }
    void setClipsToBounds(bool clips) const { call<"setClipsToBounds:">(clips); }
    void setContentMode(UIViewContentMode mode) const { call<"setContentMode:">(mode); }
    void setAutoresizingMask(UIViewAutoresizing mask) const { call<"setAutoresizingMask:">(mask); }
    void setUserInteractionEnabled(bool enabled) const { call<"setUserInteractionEnabled:">(enabled); }
    void setAccessibilityIdentifier(const id& identifier) const { call<"setAccessibilityIdentifier:">(identifier); }
    UIEdgeInsets safeAreaInsets() const { return call<"safeAreaInsets", UIEdgeInsets>(); }

    UIView superview() const { return call<"superview", UIView>(); }
    std::vector<UIView> subviews() const
    {
        const id list = call<"subviews", id>();
        std::vector<UIView> views;
        for (const id& view : itemsOf(list))
            views.emplace_back(view);
        return views;
    }
    UIWindow window() const;
    void addSubview(const UIView& view) const { call<"addSubview:">(view); }
    void insertSubviewAt(const UIView& view, NSInteger index) const { call<"insertSubview:atIndex:">(view, index); }
    void bringSubviewToFront(const UIView& view) const { call<"bringSubviewToFront:">(view); }
    void removeFromSuperview() const { call<"removeFromSuperview">(); }
    void addGestureRecognizer(const UIGestureRecognizer& gesture) const;

    void setNeedsLayout() const { call<"setNeedsLayout">(); }
    void layoutIfNeeded() const { call<"layoutIfNeeded">(); }
    void setNeedsDisplay() const { call<"setNeedsDisplay">(); }
    CGSize sizeThatFits(CGSize size) const { return call<"sizeThatFits:", CGSize>(size); }
    void sizeToFit() const { call<"sizeToFit">(); }

    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) const
    {
        call<"setTranslatesAutoresizingMaskIntoConstraints:">(translates);
    }
    NSLayoutAnchor topAnchor() const { return call<"topAnchor", NSLayoutAnchor>(); }
    NSLayoutAnchor bottomAnchor() const { return call<"bottomAnchor", NSLayoutAnchor>(); }
    NSLayoutAnchor leadingAnchor() const { return call<"leadingAnchor", NSLayoutAnchor>(); }
    NSLayoutAnchor trailingAnchor() const { return call<"trailingAnchor", NSLayoutAnchor>(); }
    NSLayoutAnchor centerXAnchor() const { return call<"centerXAnchor", NSLayoutAnchor>(); }
    NSLayoutAnchor centerYAnchor() const { return call<"centerYAnchor", NSLayoutAnchor>(); }
    NSLayoutAnchor widthAnchor() const { return call<"widthAnchor", NSLayoutAnchor>(); }
    NSLayoutAnchor heightAnchor() const { return call<"heightAnchor", NSLayoutAnchor>(); }

    /// Functions without arguments; the completion takes whether the animation went to its end.
    template <class Animations> static void animate(double duration, Animations animations)
    {
        callOn<"animateWithDuration:animations:">(id(classObject()), duration, block(std::move(animations)));
    }
    template <class Animations, class Completion>
    static void animate(double duration, Animations animations, Completion completion)
    {
        callOn<"animateWithDuration:animations:completion:">(
            id(classObject()), duration, block(std::move(animations)), block(std::move(completion)));
    }
    template <class Animations>
    static void animate(double duration, double delay, UIViewAnimationOptions options, Animations animations)
    {
        callOn<"animateWithDuration:delay:options:animations:completion:">(
            id(classObject()), duration, delay, options, block(std::move(animations)), nil);
    }
    template <class Animations, class Completion> static void animate(
        double duration, double delay, UIViewAnimationOptions options, Animations animations, Completion completion)
    {
        callOn<"animateWithDuration:delay:options:animations:completion:">(
            id(classObject()), duration, delay, options, block(std::move(animations)), block(std::move(completion)));
    }
    template <class Actions> static void performWithoutAnimation(Actions actions)
    {
        callOn<"performWithoutAnimation:">(id(classObject()), block(std::move(actions)));
    }
};

/// A nil view for nil and for what isn't one.
inline UIView asView(const id& object)
{
    return to<UIView>(object);
}

} // namespace platform
