#include "platform/graphics/appearance.h"
#include "platform/uikit/animation.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/responders.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/view_controllers.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace platform {

ViewObject::~ViewObject()
{
    forgetAnimations(*this);
    if (layer_)
        layer_->view = nullptr;
    for (const Ref<ViewObject>& subview : subviews)
        subview->superview = nullptr;
}

LayerObject& ViewObject::layer()
{
    if (!layer_) {
        const id made = send<"new">(id(ask<"layerClass", Class>(id(isa())).value_or(nullptr)));
        auto* const own = as<LayerObject>(made);
        layer_ = own ? Ref<LayerObject>(own) : make<LayerObject>();
        layer_->view = this;
    }
    return *layer_;
}

CGRect ViewObject::frame() const
{
    return Presentation { bounds, center, transform, 1, std::nullopt, 0 }.frame();
}

void ViewObject::setFrame(CGRect frame)
{
    CGRect sized = bounds;
    sized.size = frame.size;
    if (!CGAffineTransformIsIdentity(transform)) {
        const CGRect box = CGRectApplyAffineTransform({ {}, frame.size }, CGAffineTransformInvert(transform));
        sized.size = box.size;
    }
    setBounds(sized);
    setCenter({ CGRectGetMidX(frame), CGRectGetMidY(frame) });
}

void ViewObject::setBounds(CGRect newBounds)
{
    if (newBounds == bounds)
        return;
    noteChange(*this, Animatable::Bounds, valuesOf(bounds), valuesOf(newBounds));
    const CGSize former = bounds.size;
    bounds = newBounds;
    if (former != bounds.size)
        resizeSubviews(former);
    setNeedsLayout();
}

void ViewObject::setCenter(CGPoint newCenter)
{
    noteChange(*this, Animatable::Center, valuesOf(center), valuesOf(newCenter));
    center = newCenter;
    checkSafeArea();
}

void ViewObject::setTransform(CGAffineTransform newTransform)
{
    noteChange(*this, Animatable::Transform, valuesOf(transform), valuesOf(newTransform));
    transform = newTransform;
}

void ViewObject::setAlpha(double newAlpha)
{
    newAlpha = newAlpha > 0 ? std::min(newAlpha, 1.0) : 0;
    noteChange(*this, Animatable::Alpha, valuesOf(alpha), valuesOf(newAlpha));
    alpha = newAlpha;
}

void ViewObject::setBackgroundColor(const id& color)
{
    noteChange(*this, Animatable::BackgroundColor, valuesOfColor(backgroundColor), valuesOfColor(color));
    backgroundColor = color;
}

void ViewObject::resizeSubviews(CGSize former)
{
    enum : unsigned long { Left = 1, Width = 2, Right = 4, Top = 8, Height = 16, Bottom = 32 };
    const auto share = [](double change, unsigned long mask, unsigned long before, unsigned long size,
                           unsigned long after, double& position, double& extent) {
        const int parts = ((mask & before) != 0) + ((mask & size) != 0) + ((mask & after) != 0);
        if (parts == 0)
            return;
        if (mask & before)
            position += change / parts;
        if (mask & size)
            extent += change / parts;
    };
    for (const Ref<ViewObject>& subview : subviews) {
        const unsigned long mask = subview->autoresizingMask;
        if (mask == 0 || !subview->translatesAutoresizingMaskIntoConstraints)
            continue;
        CGRect frame = subview->frame();
        share(bounds.size.width - former.width, mask, Left, Width, Right, frame.origin.x, frame.size.width);
        share(bounds.size.height - former.height, mask, Top, Height, Bottom, frame.origin.y, frame.size.height);
        place(*subview, frame);
    }
}

void ViewObject::setNeedsLayout()
{
    needsLayout_ = true;
    if (window())
        scheduleLayoutPass();
}

void ViewObject::contentSizeChanged()
{
    changed(*this, Asks::Drawing);
    setNeedsLayout();
    for (ViewObject* view = this; view->superview; view = view->superview) {
        const bool isPlaced
            = !view->superview->constrainsSubview(*view) || !view->translatesAutoresizingMaskIntoConstraints;
        bool matters = isPlaced && !hasFixedSize(*view);
        for (const ViewObject* ancestor = view->superview; ancestor && !matters; ancestor = ancestor->superview)
            matters = constrainsInside(*ancestor, *view);
        if (!matters)
            return;
        view->superview->setNeedsLayout();
    }
}

void ViewObject::layoutTree()
{
    const id self(this);
    if (needsLayout_) {
        needsLayout_ = false;
        noticeSafeArea();
        solveConstraints(*this);
        const id owner = controller;
        send<"viewWillLayoutSubviews", void>(owner);
        send<"layoutSubviews", void>(self);
        send<"viewDidLayoutSubviews", void>(owner);
    }
    // A layout may add and remove views.
    const std::vector<Ref<ViewObject>> present = subviews;
    for (const Ref<ViewObject>& subview : present)
        if (subview->superview == this)
            subview->layoutTree();
}

void ViewObject::insertSubview(const Ref<ViewObject>& view, std::size_t index)
{
    if (!view || isDescendantOf(*view))
        return;
    if (view->superview == this) {
        const auto present = std::ranges::find(subviews, view);
        const auto former = static_cast<std::size_t>(present - subviews.begin());
        if (former < index)
            --index;
        if (former == index)
            return;
        subviews.erase(present);
        subviews.insert(subviews.begin() + static_cast<std::ptrdiff_t>(std::min(index, subviews.size())), view);
        changed(*this, Asks::Drawing);
        return;
    }
    const id self(this);
    send<"willMoveToSuperview:", void>(view, self);
    WindowObject* const former = view->window();
    const bool stays = former && former == window();
    if (view->superview)
        view->leaveSuperview(stays);
    if (!stays && window())
        view->movesToWindow(window());
    view->superview = this;
    subviews.insert(subviews.begin() + static_cast<std::ptrdiff_t>(std::min(index, subviews.size())), view);
    send<"didAddSubview:", void>(self, id(view));
    send<"didMoveToSuperview", void>(view);
    if (stays)
        view->safeAreaMayHaveChanged();
    else
        view->movedToWindow(nullptr);
    changed(*this, Asks::Layout);
}

void ViewObject::removeFromSuperview()
{
    if (superview)
        leaveSuperview(false);
}

void ViewObject::leaveSuperview(bool staysInWindow)
{
    const Ref<ViewObject> self(this);
    const Ref<ViewObject> former(superview);
    WindowObject* const formerWindow = window();
    cancelAnimations(*this);
    if (formerWindow && !staysInWindow)
        movesToWindow(nullptr);
    send<"willMoveToSuperview:", void>(self, nil);
    send<"willRemoveSubview:", void>(former, id(self));
    dropConstraintsAcross(*this);
    std::erase(former->subviews, self);
    superview = nullptr;
    send<"didMoveToSuperview", void>(self);
    if (!staysInWindow)
        movedToWindow(formerWindow);
    changed(*former, Asks::Layout);
}

void ViewObject::movesToWindow(WindowObject* next)
{
    send<"willMoveToWindow:", void>(id(this), id(next));
    if (const Ref<NSObject> owner = controller.get())
        if (auto* const known = asController(owner))
            known->viewWillMove(next);
    const std::vector<Ref<ViewObject>> present = subviews;
    for (const Ref<ViewObject>& subview : present)
        subview->movesToWindow(next);
}

void ViewObject::movedToWindow(WindowObject* former)
{
    if (former == window())
        return;
    const id self(this);
    if (former)
        abandonGestures(*this);
    if (!window())
        forceResignation(self);
    send<"didMoveToWindow", void>(self);
    checkSafeArea();
    if (needsLayout_)
        setNeedsLayout();
    const std::vector<Ref<ViewObject>> present = subviews;
    for (const Ref<ViewObject>& subview : present)
        subview->movedToWindow(former);
    if (const Ref<NSObject> owner = controller.get())
        if (auto* const known = asController(owner))
            known->viewDidMove(window());
}

bool ViewObject::isDescendantOf(const ViewObject& other) const noexcept
{
    for (const ViewObject* view = this; view; view = view->superview)
        if (view == &other)
            return true;
    return false;
}

UIEdgeInsets ViewObject::safeArea() const
{
    const WindowObject* const window = const_cast<ViewObject*>(this)->window();
    if (!window)
        return {};
    const CGPoint origin = window->frame().origin;
    const CGSize screen = screenFacts().size;
    // Where what is safe begins and ends on the screen.
    UIEdgeInsets edges = screenFacts().safeArea;
    edges.bottom = screen.height - edges.bottom;
    edges.right = screen.width - edges.right;
    const auto insetsOf = [&](const ViewObject& view) {
        const CGPoint first = view.pointInRoot(view.bounds.origin);
        const CGPoint second = view.pointInRoot({ CGRectGetMaxX(view.bounds), CGRectGetMaxY(view.bounds) });
        const auto [left, right] = std::minmax({ first.x + origin.x, second.x + origin.x });
        const auto [top, bottom] = std::minmax({ first.y + origin.y, second.y + origin.y });
        return UIEdgeInsetsMake(std::clamp(edges.top - top, 0.0, std::max(edges.top, 0.0)),
            std::clamp(edges.left - left, 0.0, std::max(edges.left, 0.0)),
            std::clamp(bottom - edges.bottom, 0.0, std::max(screen.height - edges.bottom, 0.0)),
            std::clamp(right - edges.right, 0.0, std::max(screen.width - edges.right, 0.0)));
    };
    std::vector<const ViewObject*> holders;
    for (const ViewObject* view = this; view; view = view->superview)
        if (const id owner = view->controller)
            if (const auto* const known = asController(owner);
                known && known->additionalSafeAreaInsets + known->containerInsets != UIEdgeInsets {})
                holders.push_back(view);
    for (auto view = holders.rbegin(); view != holders.rend(); ++view) {
        const id owner = (*view)->controller;
        const auto* const known = asController(owner);
        const UIEdgeInsets insets = insetsOf(**view) + known->additionalSafeAreaInsets + known->containerInsets;
        const CGPoint first = (*view)->pointInRoot((*view)->bounds.origin);
        const CGPoint second = (*view)->pointInRoot({ CGRectGetMaxX((*view)->bounds), CGRectGetMaxY((*view)->bounds) });
        edges = UIEdgeInsetsMake(std::min(first.y, second.y) + origin.y + insets.top,
            std::min(first.x, second.x) + origin.x + insets.left,
            std::max(first.y, second.y) + origin.y - insets.bottom,
            std::max(first.x, second.x) + origin.x - insets.right);
    }
    return insetsOf(*this);
}

void ViewObject::safeAreaMayHaveChanged()
{
    checkSafeArea();
    for (const Ref<ViewObject>& subview : subviews)
        subview->safeAreaMayHaveChanged();
}

void ViewObject::checkSafeArea()
{
    if (safeArea() != noticedSafeArea_)
        setNeedsLayout();
}

void ViewObject::noticeSafeArea()
{
    const UIEdgeInsets present = safeArea();
    if (std::exchange(noticedSafeArea_, present) == present)
        return;
    send<"safeAreaInsetsDidChange", void>(id(this));
    const id owner = controller;
    send<"viewSafeAreaInsetsDidChange", void>(owner);
    for (const Ref<ViewObject>& subview : subviews)
        subview->checkSafeArea();
}

WindowObject* ViewObject::window() noexcept
{
    return superview ? superview->window() : nullptr;
}

const ViewObject& ViewObject::root() const noexcept
{
    return superview ? superview->root() : *this;
}

namespace {

/// From the view's own coordinates to its superview's.
CGAffineTransform outwards(const ViewObject& view)
{
    const CGAffineTransform toCenter
        = CGAffineTransformMakeTranslation(-CGRectGetMidX(view.bounds), -CGRectGetMidY(view.bounds));
    return CGAffineTransformConcat(CGAffineTransformConcat(toCenter, view.transform),
        CGAffineTransformMakeTranslation(view.center.x, view.center.y));
}

} // namespace

CGPoint ViewObject::pointInRoot(CGPoint point) const
{
    return superview ? superview->pointInRoot(CGPointApplyAffineTransform(point, outwards(*this))) : point;
}

CGPoint ViewObject::pointFromRoot(CGPoint point) const
{
    return superview
        ? CGPointApplyAffineTransform(superview->pointFromRoot(point), CGAffineTransformInvert(outwards(*this)))
        : point;
}

Color ViewObject::effectiveTint() const
{
    constexpr Color lightBlue { 0, 122 / 255.0, 1, 1 };
    constexpr Color darkBlue { 10 / 255.0, 132 / 255.0, 1, 1 };
    for (const ViewObject* view = this; view; view = view->superview)
        if (const auto tint = asColor(view->tintColor))
            return *tint;
    return isDarkNow() ? darkBlue : lightBlue;
}

void changed(ViewObject& view, Asks what)
{
    noteDamage();
    if (what == Asks::Layout)
        view.setNeedsLayout();
    else if (what == Asks::Size)
        send<"invalidateIntrinsicContentSize", void>(id(&view));
}

void place(ViewObject& view, const CGRect& frame)
{
    if (view.frame() != frame)
        send<"setFrame:", void>(id(&view), frame);
}

void place(ViewObject& view, const CGRect& bounds, CGPoint center)
{
    const id self(&view);
    if (view.bounds != bounds)
        send<"setBounds:", void>(self, bounds);
    if (view.center != center)
        send<"setCenter:", void>(self, center);
}

void ViewObject::drawContent(Canvas&, const CGRect&) const { }

CGSize ViewObject::sizeThatFits(CGSize) const
{
    return bounds.size;
}

} // namespace platform
