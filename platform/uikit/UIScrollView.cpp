#include "platform/uikit/scroll_view.h"

#include "platform/dispatch/clock.h"
#include "platform/runtime/message.h"
#include "platform/uikit/frames.h"
#include "platform/uikit/navigation.h"
#include "platform/uikit/window.h"

#include <cmath>

namespace platform {

namespace {

/// The gesture that scrolls. The view knows of each touch from its beginning, since a touch stops a movement.
class ScrollPanObject final : public PanGestureRecognizerObject {
public:
    static const ClassDefinition definition;

private:
    void began(const TouchObject& touch) override
    {
        PanGestureRecognizerObject::began(touch);
        if (const Ref<ViewObject> scroll = view.get())
            static_cast<ScrollViewObject&>(*scroll).touchBegan();
    }
    void forget() override
    {
        if (const Ref<ViewObject> scroll = view.get())
            static_cast<ScrollViewObject&>(*scroll).touchOver();
    }
};

const ClassDefinition ScrollPanObject::definition { .name = "UIScrollViewPanGestureRecognizer",
    .superclass = &UIPanGestureRecognizer_class,
    .allocate = allocate<ScrollPanObject> };

double toPixel(double value)
{
    const double scale = screenFacts().scale;
    return std::round(value * scale) / scale;
}

} // namespace

ScrollViewObject::ScrollViewObject()
{
    layer().masksToBounds = true;
}

void ScrollViewObject::prepare()
{
    pan_ = make<ScrollPanObject>();
    pan_->addTarget(id(this), selector<"_didPan:">());
    send<"addGestureRecognizer:", void>(id(this), id(pan_));
}

void ScrollViewObject::setScrollEnabled(bool enabled)
{
    scrollEnabled_ = enabled;
    pan_->setEnabled(enabled);
}

void ScrollViewObject::setBoundsOrigin(CGRect newBounds)
{
    const CGPoint former = bounds.origin;
    setBounds(newBounds);
    if (former != bounds.origin)
        didScroll();
}

void ScrollViewObject::setContentOffset(CGPoint offset)
{
    if (offset != bounds.origin)
        send<"setBounds:", void>(id(this), CGRect { offset, bounds.size });
}

void ScrollViewObject::setContentOffsetAnimated(CGPoint offset, bool animated)
{
    const Ref<ScrollViewObject> self(this);
    stop();
    if (!animated || offset == bounds.origin)
        return moveTo(offset);
    goal_ = offset;
    source_ = bounds.origin;
    move(Motion::ToOffset);
}

void ScrollViewObject::setContentSize(CGSize size)
{
    if (std::exchange(contentSize_, size) == size)
        return;
    insetsMayHaveChanged();
    if (!tracking_ && motion_ == Motion::None)
        moveTo(restingOffset(bounds.origin));
    setNeedsLayout();
}

void ScrollViewObject::setContentInset(UIEdgeInsets inset)
{
    contentInset_ = inset;
    insetsMayHaveChanged();
}

UIEdgeInsets ScrollViewObject::adjustedContentInset() const
{
    UIEdgeInsets insets = contentInset_;
    if (contentInsetAdjustmentBehavior == InsetAdjustment::Never)
        return insets;
    const UIEdgeInsets safe = send<"safeAreaInsets", UIEdgeInsets>(id(const_cast<ScrollViewObject*>(this)));
    const bool always = contentInsetAdjustmentBehavior == InsetAdjustment::Always;
    if (always || canScrollVertically()) {
        insets.top += safe.top;
        insets.bottom += safe.bottom;
    }
    if (always || canScrollHorizontally()) {
        insets.left += safe.left;
        insets.right += safe.right;
    }
    return insets;
}

/// What stood at its beginning stands there again.
void ScrollViewObject::insetsMayHaveChanged()
{
    const UIEdgeInsets insets = adjustedContentInset();
    const UIEdgeInsets former = std::exchange(knownInsets_, insets);
    if (former == insets)
        return;
    CGPoint offset = bounds.origin;
    if (offset.y == -former.top)
        offset.y = -insets.top;
    if (offset.x == -former.left)
        offset.x = -insets.left;
    const id self(this);
    send<"adjustedContentInsetDidChange", void>(self);
    ask<"scrollViewDidChangeAdjustedContentInset:", void>(delegate, self);
    if (!tracking_ && motion_ == Motion::None)
        moveTo(offset);
}

bool ScrollViewObject::canScrollVertically() const
{
    return alwaysBounceVertical || contentSize_.height + contentInset_.top + contentInset_.bottom > bounds.size.height;
}

bool ScrollViewObject::canScrollHorizontally() const
{
    return alwaysBounceHorizontal || contentSize_.width + contentInset_.left + contentInset_.right > bounds.size.width;
}

ScrollLimits ScrollViewObject::verticalLimits() const
{
    const UIEdgeInsets insets = adjustedContentInset();
    const double last = contentSize_.height + insets.bottom - bounds.size.height;
    return { .low = -insets.top, .high = std::max(-insets.top, last), .bounces = bounces };
}

ScrollLimits ScrollViewObject::horizontalLimits() const
{
    const UIEdgeInsets insets = adjustedContentInset();
    const double last = contentSize_.width + insets.right - bounds.size.width;
    return { .low = -insets.left, .high = std::max(-insets.left, last), .bounces = bounces };
}

CGPoint ScrollViewObject::restingOffset(CGPoint offset) const
{
    return { horizontalLimits().held(offset.x), verticalLimits().held(offset.y) };
}

void ScrollViewObject::scrollRectToVisible(CGRect rect, bool animated)
{
    const auto along = [](double offset, double length, double from, double extent) {
        if (extent >= length || from < offset)
            return from;
        return std::max(offset, from + extent - length);
    };
    const UIEdgeInsets insets = adjustedContentInset();
    const CGRect seen = UIEdgeInsetsInsetRect(bounds, insets);
    CGPoint wanted { along(seen.origin.x, seen.size.width, rect.origin.x, rect.size.width) - insets.left,
        along(seen.origin.y, seen.size.height, rect.origin.y, rect.size.height) - insets.top };
    wanted = restingOffset(wanted);
    if (wanted != bounds.origin)
        send<"setContentOffset:animated:", void>(id(this), wanted, animated);
}

void ScrollViewObject::layoutSubviews()
{
    insetsMayHaveChanged();
    placeIndicators();
}

void ScrollViewObject::safeAreaChanged()
{
    insetsMayHaveChanged();
}

void ScrollViewObject::didScroll()
{
    if (tracking_ || motion_ != Motion::None)
        showIndicators();
    contentDidScroll(*this, bounds.origin.y + adjustedContentInset().top);
    ask<"scrollViewDidScroll:", void>(delegate, id(this));
}

void ScrollViewObject::move(Motion motion)
{
    motion_ = motion;
    motionStart_ = CACurrentMediaTime();
    eachFrame([weak = Weak<ScrollViewObject>(Ref<ScrollViewObject>(this)), movement = ++movement_] {
        const Ref<ScrollViewObject> self = weak.get();
        return self && self->movement_ == movement && self->step();
    });
}

/// Whether the movement goes on.
bool ScrollViewObject::step()
{
    constexpr double animationDuration = 0.3;
    const unsigned movement = movement_;
    const double time = CACurrentMediaTime() - motionStart_;
    const bool decelerates = motion_ == Motion::Decelerating;
    const double duration = decelerates ? std::max(horizontal_.duration(), vertical_.duration()) : animationDuration;
    if (decelerates) {
        moveTo({ horizontal_.at(time), vertical_.at(time) });
    } else {
        const double part = std::min(time / animationDuration, 1.0);
        const double eased = part * part * (3 - 2 * part);
        moveTo({ std::lerp(source_.x, goal_.x, eased), std::lerp(source_.y, goal_.y, eased) });
    }
    if (movement_ != movement)
        return false; // whoever heard of it has something else in mind
    if (time < duration)
        return true;
    stop();
    return false;
}

void ScrollViewObject::stop()
{
    const Motion former = std::exchange(motion_, Motion::None);
    ++movement_;
    if (former == Motion::None)
        return;
    hideIndicatorsLater();
    if (former == Motion::Decelerating)
        ask<"scrollViewDidEndDecelerating:", void>(delegate, id(this));
    else
        ask<"scrollViewDidEndScrollingAnimation:", void>(delegate, id(this));
}

void ScrollViewObject::moveTo(CGPoint offset)
{
    offset = { toPixel(offset.x), toPixel(offset.y) };
    if (offset != bounds.origin)
        send<"setContentOffset:", void>(id(this), offset);
}

namespace {

id initWithFrame(const id& self, SEL, CGRect frame)
{
    id view = sendSuper<"initWithFrame:">(classNamed<"UIView">(), self, frame);
    static_cast<ScrollViewObject&>(*view).prepare();
    return view;
}

bool shouldBegin(const id&, SEL, const id&, const id&, const id&)
{
    return true;
}

bool shouldCancel(const id&, SEL, const id& view)
{
    return !isKindOfClass(view, classNamed<"UIControl">());
}

void insetDidChange(const id&, SEL) { }

using Scroll = ScrollViewObject;
constexpr MethodDefinition methods[] {
    method<"_didPan:", &Scroll::didPan>(),
    method<"adjustedContentInset", &Scroll::adjustedContentInset>(),
    method<"adjustedContentInsetDidChange", &insetDidChange>(),
    getter<"alwaysBounceHorizontal", &Scroll::alwaysBounceHorizontal>(),
    getter<"alwaysBounceVertical", &Scroll::alwaysBounceVertical>(),
    getter<"bounces", &Scroll::bounces>(),
    getter<"canCancelContentTouches", &Scroll::canCancelContentTouches>(),
    method<"contentInset", &Scroll::contentInset>(),
    getter<"contentInsetAdjustmentBehavior", &Scroll::contentInsetAdjustmentBehavior>(),
    method<"contentOffset", &Scroll::contentOffset>(),
    method<"contentSize", &Scroll::contentSize>(),
    getter<"decelerationRate", &Scroll::decelerationRate>(),
    getter<"delaysContentTouches", &Scroll::delaysContentTouches>(),
    getter<"delegate", &Scroll::delegate>(),
    method<"flashScrollIndicators", &Scroll::flashScrollIndicators>(),
    method<"gestureRecognizerShouldBegin:", &Scroll::gestureShouldBegin>(),
    getter<"indicatorStyle", &Scroll::indicatorStyle>(),
    method<"initWithFrame:", &initWithFrame>(),
    method<"isDecelerating", &Scroll::isDecelerating>(),
    getter<"isDirectionalLockEnabled", &Scroll::directionalLockEnabled>(),
    method<"isDragging", &Scroll::isDragging>(),
    getter<"isPagingEnabled", &Scroll::pagingEnabled>(),
    method<"isScrollEnabled", &Scroll::isScrollEnabled>(),
    method<"isTracking", &Scroll::isTracking>(),
    getter<"keyboardDismissMode", &Scroll::keyboardDismissMode>(),
    method<"layoutSubviews", &Scroll::layoutSubviews>(),
    method<"panGestureRecognizer", &Scroll::panGestureRecognizer>(),
    method<"safeAreaInsetsDidChange", &Scroll::safeAreaChanged>(),
    getter<"scrollIndicatorInsets", &Scroll::scrollIndicatorInsets>(),
    method<"scrollRectToVisible:animated:", &Scroll::scrollRectToVisible>(),
    getter<"scrollsToTop", &Scroll::scrollsToTop>(),
    setterThatAsks<"setAlwaysBounceHorizontal:", &Scroll::alwaysBounceHorizontal, Asks::Layout>(),
    setterThatAsks<"setAlwaysBounceVertical:", &Scroll::alwaysBounceVertical, Asks::Layout>(),
    setter<"setBounces:", &Scroll::bounces>(),
    method<"setBounds:", &Scroll::setBoundsOrigin>(),
    setter<"setCanCancelContentTouches:", &Scroll::canCancelContentTouches>(),
    method<"setContentInset:", &Scroll::setContentInset>(),
    setterThatAsks<"setContentInsetAdjustmentBehavior:", &Scroll::contentInsetAdjustmentBehavior, Asks::Layout>(),
    method<"setContentOffset:", &Scroll::setContentOffset>(),
    method<"setContentOffset:animated:", &Scroll::setContentOffsetAnimated>(),
    method<"setContentSize:", &Scroll::setContentSize>(),
    setter<"setDecelerationRate:", &Scroll::decelerationRate>(),
    setter<"setDelaysContentTouches:", &Scroll::delaysContentTouches>(),
    setter<"setDelegate:", &Scroll::delegate>(),
    setter<"setDirectionalLockEnabled:", &Scroll::directionalLockEnabled>(),
    setterThatAsks<"setIndicatorStyle:", &Scroll::indicatorStyle, Asks::Layout>(),
    setter<"setKeyboardDismissMode:", &Scroll::keyboardDismissMode>(),
    setter<"setPagingEnabled:", &Scroll::pagingEnabled>(),
    method<"setScrollEnabled:", &Scroll::setScrollEnabled>(),
    setterThatAsks<"setScrollIndicatorInsets:", &Scroll::scrollIndicatorInsets, Asks::Layout>(),
    setter<"setScrollsToTop:", &Scroll::scrollsToTop>(),
    setterThatAsks<"setShowsHorizontalScrollIndicator:", &Scroll::showsHorizontalScrollIndicator, Asks::Layout>(),
    setterThatAsks<"setShowsVerticalScrollIndicator:", &Scroll::showsVerticalScrollIndicator, Asks::Layout>(),
    getter<"showsHorizontalScrollIndicator", &Scroll::showsHorizontalScrollIndicator>(),
    getter<"showsVerticalScrollIndicator", &Scroll::showsVerticalScrollIndicator>(),
    method<"touchesShouldBegin:withEvent:inContentView:", &shouldBegin>(),
    method<"touchesShouldCancelInContentView:", &shouldCancel>(),
};

} // namespace

const ClassDefinition ScrollViewObject::definition { .name = "UIScrollView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<ScrollViewObject>,
    .methods = methods };

} // namespace platform
