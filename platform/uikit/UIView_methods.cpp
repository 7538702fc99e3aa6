#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/animation.h"
#include "platform/uikit/constraints.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/traits.h"
#include "platform/uikit/views.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

ViewObject& viewIn(const id& self)
{
    return static_cast<ViewObject&>(*self);
}

id init(const id& self, SEL)
{
    return send<"initWithFrame:">(self, CGRectZero);
}

id initWithFrame(const id& self, SEL, CGRect frame)
{
    viewIn(self).setFrame(frame);
    return self;
}

Class layerClass(const id&, SEL)
{
    return classNamed<"CALayer">();
}

id layer(const id& self, SEL)
{
    return id(&viewIn(self).layer());
}

id superview(const id& self, SEL)
{
    return id(viewIn(self).superview);
}

/// A view's controller stands between it and its superview.
id nextResponder(const id& self, SEL)
{
    const id controller = viewIn(self).controller;
    return controller ? controller : id(viewIn(self).superview);
}

id subviews(const id& self, SEL)
{
    return array({ viewIn(self).subviews.begin(), viewIn(self).subviews.end() });
}

id window(const id& self, SEL)
{
    return id(viewIn(self).window());
}

void addSubview(const id& self, SEL, const id& subview)
{
    viewIn(self).insertSubview(Ref<ViewObject>(asViewObject(subview)), viewIn(self).subviews.size());
}

void insertAtIndex(const id& self, SEL, const id& subview, NSInteger index)
{
    viewIn(self).insertSubview(Ref<ViewObject>(asViewObject(subview)),
        index < 0 ? viewIn(self).subviews.size() : static_cast<std::size_t>(index));
}

std::size_t indexOf(const ViewObject& view, const id& subview)
{
    const auto found
        = std::ranges::find(view.subviews, subview, [](const Ref<ViewObject>& present) { return id(present); });
    return static_cast<std::size_t>(found - view.subviews.begin());
}

void insertBelow(const id& self, SEL, const id& subview, const id& sibling)
{
    viewIn(self).insertSubview(Ref<ViewObject>(asViewObject(subview)), indexOf(viewIn(self), sibling));
}

void insertAbove(const id& self, SEL, const id& subview, const id& sibling)
{
    viewIn(self).insertSubview(Ref<ViewObject>(asViewObject(subview)), indexOf(viewIn(self), sibling) + 1);
}

void bringToFront(const id& self, SEL, const id& subview)
{
    if (const auto* const view = asViewObject(subview); view && view->superview == &viewIn(self))
        addSubview(self, nullptr, subview);
}

void sendToBack(const id& self, SEL, const id& subview)
{
    if (const auto* const view = asViewObject(subview); view && view->superview == &viewIn(self))
        insertAtIndex(self, nullptr, subview, 0);
}

void removeFromSuperview(const id& self, SEL)
{
    viewIn(self).removeFromSuperview();
}

bool isDescendantOfView(const id& self, SEL, const id& other)
{
    const auto* const view = asViewObject(other);
    return view && viewIn(self).isDescendantOf(*view);
}

void doNothing(const id&, SEL) { }

void doNothingWith(const id&, SEL, const id&) { }

void setHidden(const id& self, SEL, bool hidden)
{
    ViewObject& view = viewIn(self);
    if (std::exchange(view.hidden, hidden) == hidden)
        return;
    changed(view, Asks::Drawing);
    // Who places its subviews itself leaves no room for what is hidden; to all others it makes no difference.
    if (view.superview && !view.superview->constrainsSubview(view))
        send<"invalidateIntrinsicContentSize", void>(id(view.superview));
}

bool clipsToBounds(const id& self, SEL)
{
    const LayerObject* const layer = viewIn(self).layerIfMade();
    return layer && layer->masksToBounds;
}

void setClipsToBounds(const id& self, SEL, bool clips)
{
    if (clipsToBounds(self, nullptr) != clips)
        send<"setMasksToBounds:", void>(id(&viewIn(self).layer()), clips);
}

id tintColor(const id& self, SEL)
{
    return colorObject(viewIn(self).effectiveTint());
}

void setNeedsDisplay(const id& self, SEL)
{
    changed(viewIn(self), Asks::Drawing);
}

/// Whether it is placed by its frame or by constraints is its superview's layout.
void setTranslates(const id& self, SEL, bool translates)
{
    ViewObject& view = viewIn(self);
    if (std::exchange(view.translatesAutoresizingMaskIntoConstraints, translates) != translates && view.superview)
        changed(*view.superview, Asks::Layout);
}

void setNeedsLayout(const id& self, SEL)
{
    viewIn(self).setNeedsLayout();
}

/// From the outermost view that has asked for it, since it decides where this one stands.
void layoutIfNeeded(const id& self, SEL)
{
    ViewObject* outermost = &viewIn(self);
    for (ViewObject* view = outermost; view; view = view->superview)
        if (view->needsLayout())
            outermost = view;
    outermost->layoutTree();
}

id viewWithTag(const id& self, SEL cmd, NSInteger tag)
{
    if (viewIn(self).tag == tag)
        return self;
    for (const Ref<ViewObject>& subview : viewIn(self).subviews)
        if (id found = viewWithTag(subview, cmd, tag))
            return found;
    return nil;
}

bool gestureShouldBegin(const id&, SEL, const id&)
{
    return true;
}

bool pointInside(const id& self, SEL, CGPoint point, const id&)
{
    return CGRectContainsPoint(viewIn(self).bounds, point);
}

id hitTest(const id& self, SEL, CGPoint point, const id& event)
{
    const ViewObject& view = viewIn(self);
    constexpr double leastAlpha = 0.01;
    if (view.hidden || !view.userInteractionEnabled || view.alpha < leastAlpha
        || !send<"pointInside:withEvent:", bool>(self, point, event))
        return nil;
    const CGPoint inRoot = view.pointInRoot(point);
    const std::vector<Ref<ViewObject>> present = view.subviews;
    for (auto subview = present.rbegin(); subview != present.rend(); ++subview)
        if (id hit = send<"hitTest:withEvent:">(*subview, (*subview)->pointFromRoot(inRoot), event))
            return hit;
    return self;
}

CGPoint convertPointToView(const id& self, SEL, CGPoint point, const id& other)
{
    const CGPoint inRoot = viewIn(self).pointInRoot(point);
    const auto* const view = asViewObject(other);
    return view ? view->pointFromRoot(inRoot) : inRoot;
}

CGPoint convertPointFromView(const id& self, SEL, CGPoint point, const id& other)
{
    const auto* const view = asViewObject(other);
    return viewIn(self).pointFromRoot(view ? view->pointInRoot(point) : point);
}

template <auto Convert> CGRect convertRect(const id& self, SEL cmd, CGRect rect, const id& other)
{
    const CGPoint corners[] { rect.origin, { CGRectGetMaxX(rect), rect.origin.y },
        { rect.origin.x, CGRectGetMaxY(rect) }, { CGRectGetMaxX(rect), CGRectGetMaxY(rect) } };
    CGPoint low = Convert(self, cmd, corners[0], other);
    CGPoint high = low;
    for (const CGPoint& corner : corners) {
        const CGPoint point = Convert(self, cmd, corner, other);
        low = { std::min(low.x, point.x), std::min(low.y, point.y) };
        high = { std::max(high.x, point.x), std::max(high.y, point.y) };
    }
    return CGRectMake(low.x, low.y, high.x - low.x, high.y - low.y);
}

CGSize intrinsicContentSize(const id& self, SEL)
{
    return viewIn(self).intrinsicContentSize();
}

void invalidateIntrinsicContentSize(const id& self, SEL)
{
    viewIn(self).contentSizeChanged();
}

CGSize sizeThatFits(const id& self, SEL, CGSize size)
{
    return viewIn(self).sizeThatFits(size);
}

void sizeToFit(const id& self, SEL)
{
    CGRect frame = viewIn(self).frame();
    frame.size = send<"sizeThatFits:", CGSize>(self, frame.size);
    place(viewIn(self), frame);
}

CGSize systemLayoutSizeFitting(const id& self, SEL, CGSize size)
{
    return fittingSize(viewIn(self), size.width > 0 ? size.width : unlimitedWidth);
}

void setHuggingPriority(const id& self, SEL, float priority, NSInteger axis)
{
    float& hugging = axis == 0 ? viewIn(self).horizontalHugging : viewIn(self).verticalHugging;
    if (std::exchange(hugging, priority) != priority)
        viewIn(self).contentSizeChanged();
}

void setCompressionResistance(const id&, SEL, float, NSInteger) { }

UIEdgeInsets safeAreaInsets(const id& self, SEL)
{
    return viewIn(self).safeArea();
}

constexpr MethodDefinition methods[] {
    getter<"accessibilityIdentifier", &ViewObject::accessibilityIdentifier>(),
    getter<"accessibilityLabel", &ViewObject::accessibilityLabel>(),
    method<"addSubview:", &addSubview>(),
    getter<"alpha", &ViewObject::alpha>(),
    getter<"autoresizingMask", &ViewObject::autoresizingMask>(),
    getter<"backgroundColor", &ViewObject::backgroundColor>(),
    getter<"bounds", &ViewObject::bounds>(),
    method<"bringSubviewToFront:", &bringToFront>(),
    getter<"center", &ViewObject::center>(),
    method<"clipsToBounds", &clipsToBounds>(),
    getter<"contentMode", &ViewObject::contentMode>(),
    method<"convertPoint:fromView:", &convertPointFromView>(),
    method<"convertPoint:toView:", &convertPointToView>(),
    method<"convertRect:fromView:", &convertRect<convertPointFromView>>(),
    method<"convertRect:toView:", &convertRect<convertPointToView>>(),
    method<"didAddSubview:", &doNothingWith>(),
    method<"didMoveToSuperview", &doNothing>(),
    method<"didMoveToWindow", &doNothing>(),
    method<"frame", &ViewObject::frame>(),
    method<"gestureRecognizerShouldBegin:", &gestureShouldBegin>(),
    method<"hitTest:withEvent:", &hitTest>(),
    method<"init", &init>(),
    method<"initWithFrame:", &initWithFrame>(),
    method<"insertSubview:aboveSubview:", &insertAbove>(),
    method<"insertSubview:atIndex:", &insertAtIndex>(),
    method<"insertSubview:belowSubview:", &insertBelow>(),
    method<"intrinsicContentSize", &intrinsicContentSize>(),
    method<"invalidateIntrinsicContentSize", &invalidateIntrinsicContentSize>(),
    method<"isDescendantOfView:", &isDescendantOfView>(),
    getter<"isHidden", &ViewObject::hidden>(),
    getter<"isOpaque", &ViewObject::opaque>(),
    getter<"isUserInteractionEnabled", &ViewObject::userInteractionEnabled>(),
    method<"layer", &layer>(),
    classMethod<"layerClass", &layerClass>(),
    method<"layoutIfNeeded", &layoutIfNeeded>(),
    method<"layoutSubviews", &doNothing>(),
    method<"nextResponder", &nextResponder>(),
    method<"pointInside:withEvent:", &pointInside>(),
    method<"removeFromSuperview", &removeFromSuperview>(),
    method<"safeAreaInsets", &safeAreaInsets>(),
    method<"safeAreaInsetsDidChange", &doNothing>(),
    method<"sendSubviewToBack:", &sendToBack>(),
    setter<"setAccessibilityIdentifier:", &ViewObject::accessibilityIdentifier>(),
    setter<"setAccessibilityLabel:", &ViewObject::accessibilityLabel>(),
    method<"setAlpha:", &ViewObject::setAlpha>(),
    setter<"setAutoresizingMask:", &ViewObject::autoresizingMask>(),
    method<"setBackgroundColor:", &ViewObject::setBackgroundColor>(),
    method<"setBounds:", &ViewObject::setBounds>(),
    method<"setCenter:", &ViewObject::setCenter>(),
    method<"setClipsToBounds:", &setClipsToBounds>(),
    method<"setContentCompressionResistancePriority:forAxis:", &setCompressionResistance>(),
    method<"setContentHuggingPriority:forAxis:", &setHuggingPriority>(),
    setterThatAsks<"setContentMode:", &ViewObject::contentMode, Asks::Drawing>(),
    method<"setFrame:", &ViewObject::setFrame>(),
    method<"setHidden:", &setHidden>(),
    method<"setNeedsDisplay", &setNeedsDisplay>(),
    method<"setNeedsLayout", &setNeedsLayout>(),
    setter<"setOpaque:", &ViewObject::opaque>(),
    setter<"setTag:", &ViewObject::tag>(),
    setterThatAsks<"setTintColor:", &ViewObject::tintColor, Asks::Drawing>(),
    method<"setTransform:", &ViewObject::setTransform>(),
    method<"setTranslatesAutoresizingMaskIntoConstraints:", &setTranslates>(),
    setter<"setUserInteractionEnabled:", &ViewObject::userInteractionEnabled>(),
    method<"sizeThatFits:", &sizeThatFits>(),
    method<"sizeToFit", &sizeToFit>(),
    method<"subviews", &subviews>(),
    method<"superview", &superview>(),
    method<"systemLayoutSizeFittingSize:", &systemLayoutSizeFitting>(),
    getter<"tag", &ViewObject::tag>(),
    method<"tintColor", &tintColor>(),
    getter<"transform", &ViewObject::transform>(),
    getter<"translatesAutoresizingMaskIntoConstraints", &ViewObject::translatesAutoresizingMaskIntoConstraints>(),
    method<"viewWithTag:", &viewWithTag>(),
    method<"willMoveToSuperview:", &doNothingWith>(),
    method<"willMoveToWindow:", &doNothingWith>(),
    method<"willRemoveSubview:", &doNothingWith>(),
    method<"window", &window>(),
};

/// One table of what stands in several files.
std::span<const MethodDefinition> allMethods()
{
    static const auto* const all = [] {
        auto* const joined = new std::vector<MethodDefinition>(std::begin(methods), std::end(methods));
        for (const auto& more : { animationMethods, constraintMethods, gestureMethods, traitMethods })
            joined->insert(joined->end(), more.begin(), more.end());
        return joined;
    }();
    return *all;
}

} // namespace

const ClassDefinition ViewObject::definition {
    .name = "UIView", .superclass = &UIResponder_class, .allocate = allocate<ViewObject>, .methods = allMethods()
};

} // namespace platform
