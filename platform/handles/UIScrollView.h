#pragma once

#include "platform/handles/UIGestureRecognizer.h"

namespace platform {

enum class UIScrollViewContentInsetAdjustmentBehavior : NSInteger {
    Automatic = 0,
    ScrollableAxes = 1,
    Never = 2,
    Always = 3,
};
enum class UIScrollViewIndicatorStyle : NSInteger { Default = 0, Black = 1, White = 2 };

/// What is left of the speed after a millisecond.
inline constexpr CGFloat UIScrollViewDecelerationRateNormal = 0.998;
inline constexpr CGFloat UIScrollViewDecelerationRateFast = 0.99;

class UIScrollView : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIScrollView">(); }
    static UIScrollView withFrame(const CGRect& frame) { return initialised<UIScrollView, "initWithFrame:">(frame); }

    CGPoint contentOffset() const { return call<"contentOffset", CGPoint>(); }
    void setContentOffset(CGPoint offset) const { call<"setContentOffset:">(offset); }
    void setContentOffset(CGPoint offset, bool animated) const { call<"setContentOffset:animated:">(offset, animated); }
    CGSize contentSize() const { return call<"contentSize", CGSize>(); }
    void setContentSize(CGSize size) const { call<"setContentSize:">(size); }
    UIEdgeInsets contentInset() const { return call<"contentInset", UIEdgeInsets>(); }
    void setContentInset(const UIEdgeInsets& inset) const { call<"setContentInset:">(inset); }
    UIEdgeInsets adjustedContentInset() const { return call<"adjustedContentInset", UIEdgeInsets>(); }
    void setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior behavior) const
    {
        call<"setContentInsetAdjustmentBehavior:">(behavior);
    }
    void scrollRectToVisible(const CGRect& rect, bool animated) const
    {
        call<"scrollRectToVisible:animated:">(rect, animated);
    }
    void flashScrollIndicators() const { call<"flashScrollIndicators">(); }
    void setDelegate(const id& delegate) const { call<"setDelegate:">(delegate); }
    void setDecelerationRate(CGFloat rate) const { call<"setDecelerationRate:">(rate); }
    void setBounces(bool bounces) const { call<"setBounces:">(bounces); }
    void setAlwaysBounceVertical(bool bounces) const { call<"setAlwaysBounceVertical:">(bounces); }
    void setAlwaysBounceHorizontal(bool bounces) const { call<"setAlwaysBounceHorizontal:">(bounces); }
    void setPagingEnabled(bool pages) const { call<"setPagingEnabled:">(pages); }
    void setScrollEnabled(bool enabled) const { call<"setScrollEnabled:">(enabled); }
    void setDirectionalLockEnabled(bool locks) const { call<"setDirectionalLockEnabled:">(locks); }
    void setDelaysContentTouches(bool delays) const { call<"setDelaysContentTouches:">(delays); }
    void setCanCancelContentTouches(bool cancels) const { call<"setCanCancelContentTouches:">(cancels); }
    void setShowsVerticalScrollIndicator(bool shows) const { call<"setShowsVerticalScrollIndicator:">(shows); }
    void setShowsHorizontalScrollIndicator(bool shows) const { call<"setShowsHorizontalScrollIndicator:">(shows); }
    void setIndicatorStyle(UIScrollViewIndicatorStyle style) const { call<"setIndicatorStyle:">(style); }
    bool isTracking() const { return call<"isTracking", bool>(); }
    bool isDragging() const { return call<"isDragging", bool>(); }
    bool isDecelerating() const { return call<"isDecelerating", bool>(); }
    UIGestureRecognizer panGestureRecognizer() const { return call<"panGestureRecognizer", UIGestureRecognizer>(); }
};

} // namespace platform
