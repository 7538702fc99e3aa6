#include "platform/runtime/message.h"
#include "platform/uikit/scroll_view.h"
#include "platform/uikit/window.h"

#include <cmath>

/// What a finger does to a scroll view, from its touch to the movement that it leaves behind.

namespace platform {

namespace {

double pixel()
{
    return 1 / screenFacts().scale;
}

/// Where a list is seen that a finger has drawn to that offset.
double drawnTo(double offset, const ScrollLimits& limits, double length)
{
    const double inside = limits.held(offset);
    return inside + (limits.bounces ? rubberBand(offset - inside, length) : 0);
}

} // namespace

ContentTouch ScrollViewObject::contentTouch()
{
    if (caught_)
        return ContentTouch::Swallowed;
    const bool mayScroll = scrollEnabled_ && (canScrollVertically() || canScrollHorizontally());
    return mayScroll && delaysContentTouches ? ContentTouch::HeldBack : ContentTouch::Delivered;
}

void ScrollViewObject::touchBegan()
{
    tracking_ = true;
    caught_ = motion_ != Motion::None;
    stop();
}

void ScrollViewObject::touchOver()
{
    const bool wasCaught = std::exchange(caught_, false);
    tracking_ = false;
    if (std::exchange(dragging_, false))
        lift({}); // cancelled
    else if (wasCaught && motion_ == Motion::None && restingOffset(bounds.origin) != bounds.origin)
        decelerate({}, bounds.origin);
}

/// Only in a direction in which there is something to scroll, and over a view that has been told of the touch only
/// where that may be taken from it.
bool ScrollViewObject::gestureShouldBegin(const id& gesture)
{
    if (gesture != id(pan_))
        return true;
    const CGPoint way = pan_->translationInView(nil);
    if (!(std::abs(way.x) > std::abs(way.y) ? canScrollHorizontally() : canScrollVertically()))
        return false;
    const Ref<TouchObject> touch = pan_->lastTouch();
    if (!touch || !touch->isKnownToView || touch->view.get() == this)
        return true;
    return canCancelContentTouches && send<"touchesShouldCancelInContentView:", bool>(id(this), id(touch->view));
}

void ScrollViewObject::didPan(const id&)
{
    const Ref<ScrollViewObject> self(this);
    switch (pan_->state()) {
    case GestureState::Began:
        beginDrag();
        break;
    case GestureState::Changed:
        drag();
        break;
    case GestureState::Ended:
        if (std::exchange(dragging_, false)) {
            tracking_ = false;
            const CGPoint finger = pan_->velocityInView(nil);
            lift({ canScrollHorizontally() && !locksHorizontal_ ? -finger.x : 0,
                canScrollVertically() && !locksVertical_ ? -finger.y : 0 });
        }
        break;
    default:
        break;
    }
}

void ScrollViewObject::beginDrag()
{
    dragging_ = true;
    const CGPoint way = pan_->translationInView(nil);
    const bool across = std::abs(way.x) > std::abs(way.y);
    locksHorizontal_ = directionalLockEnabled && !across;
    locksVertical_ = directionalLockEnabled && across;
    pan_->setTranslation({}, nil);
    const auto finger = [](double offset, const ScrollLimits& limits, double length) {
        const double inside = limits.held(offset);
        return inside + pulledBy(offset - inside, length);
    };
    dragStart_ = { finger(bounds.origin.x, horizontalLimits(), bounds.size.width),
        finger(bounds.origin.y, verticalLimits(), bounds.size.height) };
    ask<"scrollViewWillBeginDragging:", void>(delegate, id(this));
    showIndicators();
}

void ScrollViewObject::drag()
{
    if (!dragging_)
        return;
    const CGPoint way = pan_->translationInView(nil);
    CGPoint offset = bounds.origin;
    if (canScrollHorizontally() && !locksHorizontal_)
        offset.x = drawnTo(dragStart_.x - way.x, horizontalLimits(), bounds.size.width);
    if (canScrollVertically() && !locksVertical_)
        offset.y = drawnTo(dragStart_.y - way.y, verticalLimits(), bounds.size.height);
    moveTo(offset);
}

/// The page to come to rest at: the next one in the direction of a movement, the nearest one without.
CGPoint ScrollViewObject::pageFor(CGPoint velocity) const
{
    const auto along = [](double offset, double speed, double length, const ScrollLimits& limits) {
        constexpr double flick = 200; // points a second
        if (length <= 0)
            return offset;
        const double page = offset / length;
        const double wanted = speed > flick ? std::floor(page) + 1
            : speed < -flick                ? std::ceil(page) - 1
                                            : std::round(page);
        return limits.held(wanted * length);
    };
    return { along(bounds.origin.x, velocity.x, bounds.size.width, horizontalLimits()),
        along(bounds.origin.y, velocity.y, bounds.size.height, verticalLimits()) };
}

void ScrollViewObject::lift(CGPoint velocity)
{
    const id self(this);
    const CGPoint projected = pagingEnabled ? pageFor(velocity)
                                            : CGPoint { projectedEnd(bounds.origin.x, velocity.x, decelerationRate),
                                                  projectedEnd(bounds.origin.y, velocity.y, decelerationRate) };
    const CGPoint resting = restingOffset(projected);
    CGPoint target = resting;
    constexpr double milliseconds = 1000;
    ask<"scrollViewWillEndDragging:withVelocity:targetContentOffset:", void>(
        delegate, self, CGPoint { velocity.x / milliseconds, velocity.y / milliseconds }, &target);
    if (target.x == resting.x)
        target.x = projected.x;
    if (target.y == resting.y)
        target.y = projected.y;
    const bool decelerates = std::hypot(target.x - bounds.origin.x, target.y - bounds.origin.y) > pixel() / 2
        || restingOffset(bounds.origin) != bounds.origin;
    ask<"scrollViewDidEndDragging:willDecelerate:", void>(delegate, self, decelerates);
    if (decelerates && !tracking_)
        decelerate(velocity, target);
    else
        hideIndicatorsLater();
}

void ScrollViewObject::decelerate(CGPoint velocity, CGPoint target)
{
    const auto along = [this](double offset, double speed, double end, const ScrollLimits& limits) {
        if (pagingEnabled)
            return AxisMotion::springing(offset, speed, end, pixel());
        const double inside = limits.held(offset);
        // Beyond an end the list springs back, unless it has been thrown back in.
        if (inside != offset && limits.held(end) != end)
            return AxisMotion::springing(offset, 0, inside, pixel());
        if (inside != offset && (end - offset) * (inside - offset) <= 0)
            return AxisMotion::springing(offset, 0, inside, pixel());
        return AxisMotion::gliding(offset, end, decelerationRate, limits, pixel());
    };
    horizontal_ = along(bounds.origin.x, velocity.x, target.x, horizontalLimits());
    vertical_ = along(bounds.origin.y, velocity.y, target.y, verticalLimits());
    ask<"scrollViewWillBeginDecelerating:", void>(delegate, id(this));
    move(Motion::Decelerating);
}

} // namespace platform
