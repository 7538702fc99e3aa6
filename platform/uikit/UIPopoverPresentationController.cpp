#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/appearance.h"
#include "platform/handles/UIView.h"
#include "platform/runtime/message.h"
#include "platform/uikit/transitions.h"

#include <algorithm>

namespace platform {

namespace {

/// The side to which the arrow points, by the system's numbers.
enum Arrow : NSUInteger { Up = 1, Down = 2, Left = 4, Right = 8, Any = 15, Unknown = ~NSUInteger { 0 } };

// Points.
constexpr double radius = 13;
constexpr double arrowHeight = 13;
constexpr double arrowBase = 37;
constexpr double screenMargin = 10;
constexpr CGSize usualSize { 320, 480 };

/// The bubble with its arrow; the presented view stands in it.
class BubbleObject : public ViewObject {
public:
    static const ClassDefinition definition;
    NSUInteger arrow = 0;
    double along = 0; ///< where the arrow's tip stands on its side

    Path outline(const CGRect& bounds) const
    {
        const CGRect box = boxIn(bounds);
        Path path = Path::roundedRect(box, { radius, AllCorners, CornerCurve::Continuous });
        if (arrow == 0)
            return path;
        const bool isUpright = arrow == Up || arrow == Down;
        const double edge = arrow == Up ? box.origin.y
            : arrow == Down             ? CGRectGetMaxY(box)
            : arrow == Left             ? box.origin.x
                                        : CGRectGetMaxX(box);
        const double outwards = arrow == Up || arrow == Left ? -arrowHeight : arrowHeight;
        const auto at = [&](double offset, double out) {
            return isUpright ? CGPoint { along + offset, edge + out } : CGPoint { edge + out, along + offset };
        };
        constexpr double half = arrowBase / 2;
        path.moveTo(at(-half, -outwards * 0.02));
        path.curveTo(at(-5, outwards * 0.8), at(-half * 0.55, 0), at(-9, outwards * 0.4));
        path.curveTo(at(5, outwards * 0.8), at(-2, outwards * 1.07), at(2, outwards * 1.07));
        path.curveTo(at(half, -outwards * 0.02), at(9, outwards * 0.4), at(half * 0.55, 0));
        path.close();
        return path;
    }

    CGRect boxIn(const CGRect& bounds) const
    {
        return UIEdgeInsetsInsetRect(bounds,
            UIEdgeInsetsMake(arrow == Up ? arrowHeight : 0, arrow == Left ? arrowHeight : 0,
                arrow == Down ? arrowHeight : 0, arrow == Right ? arrowHeight : 0));
    }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        const bool isDark = isDarkNow();
        canvas.fill(outline(seen), isDark ? Color { 0.14, 0.14, 0.15, 1 } : Color { 0.96, 0.96, 0.97, 1 });
    }
};

const ClassDefinition BubbleObject::definition {
    .name = "_UIPopoverView", .superclass = &ViewObject::definition, .allocate = allocate<BubbleObject>
};

/// A bubble beside what it is about.
class PopoverPresentationObject final : public PresentationControllerObject {
public:
    Weak<NSObject> sourceView {};
    Weak<NSObject> barButtonItem {};
    CGRect sourceRect {};
    bool hasSourceRect = false;
    NSUInteger permittedArrows = Any;

    PopoverPresentationObject() { style = PresentationStyle::Popover; }

    NSUInteger arrowDirection() const { return bubble_ ? bubble_->arrow : NSUInteger { Unknown }; }

    bool removesPresentersView() const override { return false; }

    id bubble() const { return bubble_ ? id(bubble_) : presentedView(); }

    CGRect presentedFrame() const override { return placed().frame; }

    void willPresent() override
    {
        const Ref<ViewControllerObject> controller = presented.get();
        bubble_ = make<BubbleObject>();
        const CALayer layer = UIView(id(bubble_)).layer();
        layer.setShadowOpacity(0.15F);
        layer.setShadowOffset({ 0, 4 });
        layer.setShadowRadius(24);
        const UIView outside { id(
            makeDimming({ 0, 0, 0, 0 }, { 0, 0, 0, 0 }, id(this), sel_registerName("_tappedOutside"))) };
        outside.setFrame(container->bounds);
        outside.setAutoresizingMask(UIViewAutoresizing::FlexibleWidth | UIViewAutoresizing::FlexibleHeight);
        UIView(id(container)).insertSubviewAt(outside, 0);
        const UIView content(presentedView());
        content.layer().setCornerRadius(radius);
        content.layer().setCornerCurve(string("continuous"));
        content.setClipsToBounds(true);
        arrange();
        UIView(id(bubble_)).addSubview(content);
    }

    void layOut() override
    {
        if (!bubble_)
            return;
        arrange();
        place(*bubble_, placed().frame);
    }

    id animator(bool dismisses) const override { return makeAnimator(TransitionLook::Fade, dismisses); }

    void tappedOutside()
    {
        const id asked = delegate.get();
        const Ref<PopoverPresentationObject> self(this);
        if (ask<"_chooseCancel", bool>(id(presented.get())).value_or(false))
            return;
        if (!ask<"popoverPresentationControllerShouldDismissPopover:", bool>(asked, id(self)).value_or(true)
            || !ask<"presentationControllerShouldDismiss:", bool>(asked, id(self)).value_or(true))
            return;
        ask<"presentationControllerWillDismiss:", void>(asked, id(self));
        send<"dismissViewControllerAnimated:completion:", void>(id(presented.get()), true, block([self, asked] {
            ask<"popoverPresentationControllerDidDismissPopover:", void>(asked, id(self));
            ask<"presentationControllerDidDismiss:", void>(asked, id(self));
        }));
    }

private:
    struct Place {
        CGRect frame;
        NSUInteger arrow;
        double along;
    };

    CGRect anchor() const
    {
        id view = sourceView.get();
        if (const id item = barButtonItem.get(); item && !view)
            view = askObject<"_view">(item);
        const auto* const source = asViewObject(view);
        if (!source || !container)
            return CGRectMake(CGRectGetMidX(container->bounds), CGRectGetMidY(container->bounds), 0, 0);
        return send<"convertRect:fromView:", CGRect>(id(container), hasSourceRect ? sourceRect : source->bounds, view);
    }

    CGSize contentSize() const
    {
        const CGSize wanted = send<"preferredContentSize", CGSize>(id(presented.get()));
        return wanted.width > 0 && wanted.height > 0 ? wanted : usualSize;
    }

    /// On the first side that is allowed and has room for it, below the anchor first.
    Place placed() const
    {
        const CGRect around = anchor();
        const CGRect room
            = UIEdgeInsetsInsetRect(CGRectInset(container->bounds, screenMargin, screenMargin), container->safeArea());
        const CGSize content { std::min(contentSize().width, room.size.width),
            std::min(contentSize().height, room.size.height) };
        const std::pair<NSUInteger, double> sides[] {
            { Up, CGRectGetMaxY(room) - CGRectGetMaxY(around) - content.height },
            { Down, around.origin.y - room.origin.y - content.height },
            { Left, CGRectGetMaxX(room) - CGRectGetMaxX(around) - content.width },
            { Right, around.origin.x - room.origin.x - content.width }
        };
        NSUInteger arrow = 0;
        double most = 0;
        for (const auto& [side, space] : sides) {
            if (!(permittedArrows & side))
                continue;
            if (space >= arrowHeight) {
                arrow = side;
                break;
            }
            if (arrow == 0 || space > most) {
                arrow = side;
                most = space;
            }
        }
        CGRect frame { {}, content };
        const auto within = [](double wanted, double low, double size, double extent) {
            return std::clamp(wanted, low, std::max(low, low + size - extent));
        };
        frame.origin = { CGRectGetMidX(around) - content.width / 2, CGRectGetMidY(around) - content.height / 2 };
        if (arrow == Up || arrow == Down)
            frame.size.height += arrowHeight;
        if (arrow == Left || arrow == Right)
            frame.size.width += arrowHeight;
        if (arrow == Up)
            frame.origin.y = CGRectGetMaxY(around);
        if (arrow == Down)
            frame.origin.y = around.origin.y - frame.size.height;
        if (arrow == Left)
            frame.origin.x = CGRectGetMaxX(around);
        if (arrow == Right)
            frame.origin.x = around.origin.x - frame.size.width;
        frame.origin.x = std::round(within(frame.origin.x, room.origin.x, room.size.width, frame.size.width));
        frame.origin.y = std::round(within(frame.origin.y, room.origin.y, room.size.height, frame.size.height));
        const bool isUpright = arrow == Up || arrow == Down;
        const double tip = isUpright ? CGRectGetMidX(around) - frame.origin.x : CGRectGetMidY(around) - frame.origin.y;
        const double length = isUpright ? frame.size.width : frame.size.height;
        constexpr double nearest = radius + arrowBase / 2;
        return { frame, arrow, std::clamp(tip, std::min(nearest, length / 2), std::max(length - nearest, length / 2)) };
    }

    void arrange()
    {
        const Place present = placed();
        bubble_->arrow = present.arrow;
        bubble_->along = present.along;
        changed(*bubble_, Asks::Drawing);
        send<"setFrame:", void>(presentedView(), bubble_->boxIn({ {}, present.frame.size }));
    }

    Ref<BubbleObject> bubble_ {};
};

PopoverPresentationObject& popoverIn(const id& self)
{
    return static_cast<PopoverPresentationObject&>(*self);
}

id sourceView(const id& self, SEL)
{
    return popoverIn(self).sourceView.get();
}

void setSourceView(const id& self, SEL, const id& view)
{
    popoverIn(self).sourceView = view;
}

id barButtonItem(const id& self, SEL)
{
    return popoverIn(self).barButtonItem.get();
}

void setBarButtonItem(const id& self, SEL, const id& item)
{
    popoverIn(self).barButtonItem = item;
}

void setSourceRect(const id& self, SEL, CGRect rect)
{
    popoverIn(self).sourceRect = rect;
    popoverIn(self).hasSourceRect = true;
}

constexpr MethodDefinition methods[] {
    method<"_tappedOutside", &PopoverPresentationObject::tappedOutside>(),
    method<"arrowDirection", &PopoverPresentationObject::arrowDirection>(),
    method<"barButtonItem", &barButtonItem>(),
    getter<"permittedArrowDirections", &PopoverPresentationObject::permittedArrows>(),
    method<"presentedView", &PopoverPresentationObject::bubble>(),
    method<"setBarButtonItem:", &setBarButtonItem>(),
    setter<"setPermittedArrowDirections:", &PopoverPresentationObject::permittedArrows>(),
    method<"setSourceRect:", &setSourceRect>(),
    method<"setSourceView:", &setSourceView>(),
    getter<"sourceRect", &PopoverPresentationObject::sourceRect>(),
    method<"sourceView", &sourceView>(),
};

} // namespace

const ClassDefinition UIPopoverPresentationController_class { .name = "UIPopoverPresentationController",
    .superclass = &PresentationControllerObject::definition,
    .allocate = allocate<PopoverPresentationObject>,
    .methods = methods };

Ref<PresentationControllerObject> makePopoverPresentation()
{
    const id object = send<"new">(id(classNamed<"UIPopoverPresentationController">()));
    return Ref<PresentationControllerObject>(as<PresentationControllerObject>(object));
}

} // namespace platform
