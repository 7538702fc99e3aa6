#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/runtime/message.h"
#include "platform/uikit/scroll_view.h"
#include "platform/uikit/shades.h"

namespace platform {

namespace {

constexpr double thickness = 3;
constexpr double margin = 3; ///< from the view's edge and at both ends
constexpr double shortest = 36;
constexpr double shortestBeyond = 7; ///< while the list is drawn beyond an end

/// A bar at the edge that says which part of the contents is seen.
class ScrollIndicatorObject final : public ViewObject {
public:
    static const ClassDefinition definition;

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        enum : NSInteger { Default = 0, Black = 1, White = 2 };
        const auto* const scroll = dynamic_cast<const ScrollViewObject*>(superview);
        const NSInteger style = scroll ? scroll->indicatorStyle : NSInteger { Default };
        const Color color = style == Black ? shade::scrollIndicator.light
            : style == White               ? shade::scrollIndicator.dark
                                           : shade::scrollIndicator.color();
        canvas.fill(Path::roundedRect(seen, thickness / 2), color);
    }
};

const ClassDefinition ScrollIndicatorObject::definition { .name = "_UIScrollViewScrollIndicator",
    .superclass = &ViewObject::definition,
    .allocate = allocate<ScrollIndicatorObject> };

/// Where a bar begins and how long it is, along an axis.
std::pair<double, double> barOn(double track, double length, double offset, const ScrollLimits& limits)
{
    const double range = limits.high - limits.low;
    const double inside = std::clamp(offset, limits.low, limits.high);
    const double beyond = std::abs(offset - inside);
    const double whole = std::max(track * length / (length + range), std::min(shortest, track));
    const double bar = std::max(whole - beyond, std::min(shortestBeyond, track));
    const double part = range > 0 ? (inside - limits.low) / range : offset > limits.high ? 1.0 : 0.0;
    return { (track - bar) * part, bar };
}

} // namespace

void ScrollViewObject::placeIndicators()
{
    if (!indicatorsShown_)
        return;
    const UIEdgeInsets insets = adjustedContentInset();
    const CGRect area = UIEdgeInsetsInsetRect(UIEdgeInsetsInsetRect(bounds, insets), scrollIndicatorInsets);
    const auto show = [this](Ref<ViewObject>& indicator, const CGRect& frame) {
        if (!indicator) {
            indicator = make<ScrollIndicatorObject>();
            indicator->userInteractionEnabled = false;
        }
        insertSubview(indicator, subviews.size());
        place(*indicator, frame);
    };
    const ScrollLimits vertical = verticalLimits();
    if (showsVerticalScrollIndicator && vertical.high > vertical.low) {
        const auto [start, bar] = barOn(area.size.height - 2 * margin, bounds.size.height, bounds.origin.y, vertical);
        show(verticalIndicator_,
            CGRectMake(CGRectGetMaxX(area) - margin - thickness, area.origin.y + margin + start, thickness, bar));
    } else if (verticalIndicator_) {
        verticalIndicator_->removeFromSuperview();
    }
    const ScrollLimits horizontal = horizontalLimits();
    if (showsHorizontalScrollIndicator && horizontal.high > horizontal.low) {
        const auto [start, bar] = barOn(area.size.width - 2 * margin, bounds.size.width, bounds.origin.x, horizontal);
        show(horizontalIndicator_,
            CGRectMake(area.origin.x + margin + start, CGRectGetMaxY(area) - margin - thickness, bar, thickness));
    } else if (horizontalIndicator_) {
        horizontalIndicator_->removeFromSuperview();
    }
}

void ScrollViewObject::showIndicators()
{
    ++shown_;
    indicatorsShown_ = true;
    for (const Ref<ViewObject>& indicator : { verticalIndicator_, horizontalIndicator_ })
        if (indicator)
            indicator->setAlpha(1);
    placeIndicators();
}

void ScrollViewObject::hideIndicatorsLater()
{
    constexpr auto pause = std::chrono::milliseconds { 500 };
    if (!indicatorsShown_)
        return;
    const auto isStill = [weak = Weak<ScrollViewObject>(Ref<ScrollViewObject>(this)), shown = ++shown_] {
        const Ref<ScrollViewObject> self = weak.get();
        return self && self->shown_ == shown ? self : nullptr;
    };
    dispatch_after(pause, dispatch_get_main_queue(), [isStill] {
        if (!isStill())
            return;
        const auto fade = [isStill] {
            if (const Ref<ScrollViewObject> self = isStill())
                for (const Ref<ViewObject>& indicator : { self->verticalIndicator_, self->horizontalIndicator_ })
                    if (indicator)
                        indicator->setAlpha(0);
        };
        const auto remove = [isStill](bool) {
            if (const Ref<ScrollViewObject> self = isStill()) {
                self->indicatorsShown_ = false;
                for (const Ref<ViewObject>& indicator : { self->verticalIndicator_, self->horizontalIndicator_ })
                    if (indicator)
                        indicator->removeFromSuperview();
            }
        };
        constexpr double duration = 0.25;
        send<"animateWithDuration:animations:completion:", void>(
            id(classNamed<"UIView">()), duration, block(fade), block(remove));
    });
}

void ScrollViewObject::flashScrollIndicators()
{
    showIndicators();
    hideIndicatorsLater();
}

} // namespace platform
