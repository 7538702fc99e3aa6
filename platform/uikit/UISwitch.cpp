#include "platform/foundation/block.h"
#include "platform/runtime/message.h"
#include "platform/uikit/control.h"
#include "platform/uikit/shades.h"

namespace platform {

namespace {

constexpr CGSize switchSize { 51, 31 };
constexpr double margin = 2; ///< of the thumb in its track
constexpr double thumbSide = switchSize.height - 2 * margin;
constexpr double pressedWidth = 34; ///< of the thumb under a finger

/// A thumb that slides in a track, which has a colour while it is on.
class SwitchObject : public ControlObject {
public:
    id onTintColor {};
    id thumbTintColor {};

    SwitchObject()
    {
        track_->userInteractionEnabled = false;
        thumb_->userInteractionEnabled = false;
        track_->layer().setCornerRadius(switchSize.height / 2);
        LayerObject& layer = thumb_->layer();
        layer.setCornerRadius(thumbSide / 2);
        layer.shadowOpacity = 0.15F;
        layer.shadowOffset = { 0, 3 };
        layer.shadowRadius = 4;
        opaque = false;
    }

    /// Whatever size is asked for, a switch has its own.
    id initWithFrame(CGRect frame)
    {
        setOwnFrame(frame);
        insertSubview(track_, 0);
        insertSubview(thumb_, 1);
        show();
        return id(this);
    }

    void setOwnFrame(CGRect frame) { setFrame({ frame.origin, switchSize }); }

    bool isOn() const noexcept { return on_; }
    void setOn(bool on) { setOnAnimated(on, false); }
    void setOnAnimated(bool on, bool animated)
    {
        if (std::exchange(on_, on) == on)
            return;
        move(animated && window());
    }

    void setOnTintColor(const id& color)
    {
        onTintColor = color;
        show();
    }
    void setThumbTintColor(const id& color)
    {
        thumbTintColor = color;
        show();
    }

    CGSize sizeThatFits(CGSize) const override { return switchSize; }
    CGSize intrinsicContentSize() const override { return switchSize; }
    bool constrainsSubview(const ViewObject&) const noexcept override { return false; }

    void layoutSubviews() { show(); }

    /// A finger that has gone far enough along the track switches, wherever it is lifted.
    bool continueTracking(const id& touch, const id&)
    {
        const CGPoint point = send<"locationInView:", CGPoint>(touch, id(this));
        const bool wanted = point.x > bounds.size.width / 2;
        constexpr double enough = 8;
        if (std::abs(point.x - start_) > enough)
            slid_ = true;
        if (slid_ && wanted != on_)
            toggle();
        return true;
    }
    bool beginTracking(const id& touch, const id&)
    {
        start_ = send<"locationInView:", CGPoint>(touch, id(this)).x;
        slid_ = false;
        return true;
    }
    void endTracking(const id&, const id&)
    {
        if (!slid_ && isTouchInside())
            toggle();
    }

protected:
    void stateChanged() override { move(window() != nullptr); }

private:
    void toggle()
    {
        setOnAnimated(!on_, true);
        sendActions(ValueChanged | PrimaryActionTriggered);
    }

    void move(bool animated)
    {
        if (!animated)
            return show();
        constexpr double duration = 0.35;
        constexpr double damping = 0.8;
        send<"animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:animations:completion:",
            void>(id(classNamed<"UIView">()), duration, 0.0, damping, 0.0, NSUInteger { 0 },
            block([self = Ref<SwitchObject>(this)] { self->show(); }), nil);
    }

    void show()
    {
        const double width = isHighlighted() ? pressedWidth : thumbSide;
        place(*track_, { {}, switchSize });
        place(*thumb_, CGRectMake(on_ ? switchSize.width - margin - width : margin, margin, width, thumbSide));
        const Color on = asColor(onTintColor).value_or(shade::green.color());
        track_->setBackgroundColor(colorObject(on_ ? on : shade::switchOff.color()));
        thumb_->setBackgroundColor(colorObject(asColor(thumbTintColor).value_or(Color { 1, 1, 1, 1 })));
        constexpr double disabled = 0.5;
        track_->setAlpha(isEnabled() ? 1 : disabled);
    }

    bool on_ = false;
    bool slid_ = false; ///< by the touch that it follows
    double start_ = 0;
    Ref<ViewObject> track_ = make<ViewObject>();
    Ref<ViewObject> thumb_ = make<ViewObject>();
};

constexpr MethodDefinition methods[] {
    method<"beginTrackingWithTouch:withEvent:", &SwitchObject::beginTracking>(),
    method<"continueTrackingWithTouch:withEvent:", &SwitchObject::continueTracking>(),
    method<"endTrackingWithTouch:withEvent:", &SwitchObject::endTracking>(),
    method<"initWithFrame:", &SwitchObject::initWithFrame>(),
    method<"isOn", &SwitchObject::isOn>(),
    method<"layoutSubviews", &SwitchObject::layoutSubviews>(),
    getter<"onTintColor", &SwitchObject::onTintColor>(),
    method<"setFrame:", &SwitchObject::setOwnFrame>(),
    method<"setOn:", &SwitchObject::setOn>(),
    method<"setOn:animated:", &SwitchObject::setOnAnimated>(),
    method<"setOnTintColor:", &SwitchObject::setOnTintColor>(),
    method<"setThumbTintColor:", &SwitchObject::setThumbTintColor>(),
    getter<"thumbTintColor", &SwitchObject::thumbTintColor>(),
};

} // namespace

const ClassDefinition UISwitch_class {
    .name = "UISwitch", .superclass = &ControlObject::definition, .allocate = allocate<SwitchObject>, .methods = methods
};

} // namespace platform
