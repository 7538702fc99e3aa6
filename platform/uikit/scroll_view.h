#pragma once

#include "platform/uikit/pan_gesture.h"
#include "platform/uikit/scroll_motion.h"

namespace platform {

/// How the safe area enters into the insets, by the system's numbers.
enum class InsetAdjustment : long { Automatic = 0, ScrollableAxes = 1, Never = 2, Always = 3 };

/// A window onto contents that are larger: what is seen of them begins at the origin of its bounds. Nothing runs while
/// nothing moves.
class ScrollViewObject : public ViewObject {
public:
    static const ClassDefinition definition;
    ScrollViewObject();

    Weak<NSObject> delegate {};
    double decelerationRate = decelerationNormal;
    bool bounces = true;
    bool alwaysBounceVertical = false;
    bool alwaysBounceHorizontal = false;
    bool pagingEnabled = false;
    bool directionalLockEnabled = false;
    bool delaysContentTouches = true;
    bool canCancelContentTouches = true;
    bool scrollsToTop = true;
    bool showsVerticalScrollIndicator = true;
    bool showsHorizontalScrollIndicator = true;
    UIEdgeInsets scrollIndicatorInsets {};
    NSInteger indicatorStyle = 0;
    NSInteger keyboardDismissMode = 0;
    InsetAdjustment contentInsetAdjustmentBehavior = InsetAdjustment::Automatic;

    CGPoint contentOffset() const noexcept { return bounds.origin; }
    void setContentOffset(CGPoint offset);
    void setContentOffsetAnimated(CGPoint offset, bool animated);
    CGSize contentSize() const noexcept { return contentSize_; }
    void setContentSize(CGSize size);
    UIEdgeInsets contentInset() const noexcept { return contentInset_; }
    void setContentInset(UIEdgeInsets inset);
    UIEdgeInsets adjustedContentInset() const;
    /// So far that the rectangle of the contents is seen, and no further.
    void scrollRectToVisible(CGRect rect, bool animated);
    void flashScrollIndicators();

    bool isTracking() const noexcept { return tracking_; }
    bool isDragging() const noexcept { return dragging_; }
    bool isDecelerating() const noexcept { return motion_ == Motion::Decelerating; }
    id panGestureRecognizer() const { return id(pan_); }
    bool isScrollEnabled() const noexcept { return scrollEnabled_; }
    void setScrollEnabled(bool enabled);

    /// Gives a new view its gesture.
    void prepare();

    /// A change of the origin is a scroll.
    void setBoundsOrigin(CGRect bounds);
    void layoutSubviews();
    ContentTouch contentTouch() override;
    bool gestureShouldBegin(const id& gesture);
    void didPan(const id& gesture);
    void safeAreaChanged();

    /// What its own gesture tells it.
    void touchBegan();
    void touchOver();

protected:
    /// The offset nearest to this one at which the contents rest.
    CGPoint restingOffset(CGPoint offset) const;
    /// The contents have been scrolled, by whatever it was.
    virtual void didScroll();

private:
    enum class Motion { None, Decelerating, ToOffset };

    bool canScrollVertically() const;
    bool canScrollHorizontally() const;
    ScrollLimits verticalLimits() const;
    ScrollLimits horizontalLimits() const;
    void insetsMayHaveChanged();
    void beginDrag();
    void drag();
    void lift(CGPoint velocity);
    CGPoint pageFor(CGPoint velocity) const;
    void decelerate(CGPoint velocity, CGPoint target);
    void move(Motion motion);
    bool step();
    void stop();
    void moveTo(CGPoint offset);
    void showIndicators();
    void hideIndicatorsLater();
    void placeIndicators();

    CGSize contentSize_ {};
    UIEdgeInsets contentInset_ {};
    UIEdgeInsets knownInsets_ {};
    Ref<PanGestureRecognizerObject> pan_ {};
    bool scrollEnabled_ = true;
    bool tracking_ = false;
    bool dragging_ = false;
    bool caught_ = false; ///< the touch has stopped a movement
    CGPoint dragStart_ {}; ///< what the offset was, were nothing beyond an end
    bool locksHorizontal_ = false; ///< of a drag with a locked direction
    bool locksVertical_ = false;
    Motion motion_ = Motion::None;
    unsigned movement_ = 0; ///< tells a frame whether its movement is still the present one
    AxisMotion horizontal_ {};
    AxisMotion vertical_ {};
    CGPoint source_ {}; ///< of a movement to an offset
    CGPoint goal_ {};
    double motionStart_ = 0;
    bool indicatorsShown_ = false;
    Ref<ViewObject> verticalIndicator_ {};
    Ref<ViewObject> horizontalIndicator_ {};
    unsigned shown_ = 0; ///< tells a timer whether the indicators have been shown anew
};

} // namespace platform
