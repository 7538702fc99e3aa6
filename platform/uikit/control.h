#pragma once

#include "platform/runtime/weak.h"
#include "platform/uikit/touches.h"

namespace platform {

/// What happens to a control, by the system's numbers; joined in a mask.
enum ControlEvent : NSUInteger {
    TouchDown = 1 << 0,
    TouchDownRepeat = 1 << 1,
    TouchDragInside = 1 << 2,
    TouchDragOutside = 1 << 3,
    TouchDragEnter = 1 << 4,
    TouchDragExit = 1 << 5,
    TouchUpInside = 1 << 6,
    TouchUpOutside = 1 << 7,
    TouchCancel = 1 << 8,
    ValueChanged = 1 << 12,
    PrimaryActionTriggered = 1 << 13,
    EditingDidBegin = 1 << 16,
    EditingChanged = 1 << 17,
    EditingDidEnd = 1 << 18,
    EditingDidEndOnExit = 1 << 19,
};

enum ControlState : NSUInteger { Normal = 0, Highlighted = 1 << 0, Disabled = 1 << 1, Selected = 1 << 2 };

/// A view that makes events of touches and tells its targets, which it doesn't keep.
class ControlObject : public ViewObject {
public:
    static const ClassDefinition definition;

    bool isEnabled() const noexcept { return (state_ & Disabled) == 0; }
    bool isSelected() const noexcept { return (state_ & Selected) != 0; }
    bool isHighlighted() const noexcept { return (state_ & Highlighted) != 0; }
    NSUInteger state() const noexcept { return state_; }
    /// One that is disabled while it follows a touch lets it go.
    void setEnabled(bool enabled);
    void setSelected(bool selected) { setState(Selected, selected); }
    void setHighlighted(bool highlighted) { setState(Highlighted, highlighted); }
    bool isTracking() const noexcept { return tracking_; }
    bool isTouchInside() const noexcept { return touchInside_; }

    void addTarget(const id& target, SEL action, NSUInteger events);
    void removeTarget(const id& target, SEL action, NSUInteger events);
    id allTargets() const;
    NSUInteger allControlEvents() const;
    id actionsForTarget(const id& target, NSUInteger event) const;
    void sendActions(NSUInteger events) { sendActions(events, nil); }

    void touchesBegan(const id& touches, const id& event);
    void touchesMoved(const id& touches, const id& event);
    void touchesEnded(const id& touches, const id& event);
    void touchesCancelled(const id& touches, const id& event);

    /// Whether a gesture of a view behind may take a touch in this control: a single tap may not.
    bool gestureShouldBegin(const id& gesture) const;

protected:
    /// It is enabled, selected or highlighted as it wasn't before.
    virtual void stateChanged() { }
    /// What a lift inside means besides.
    virtual NSUInteger eventsOfTap() const { return 0; }

private:
    struct Registration {
        bool hasTarget;
        Weak<NSObject> target;
        SEL action;
        NSUInteger events;

        bool isOf(const id& other, SEL otherAction) const
        {
            return action == otherAction && hasTarget == static_cast<bool>(other) && target.get() == other;
        }
    };

    void setState(ControlState bit, bool on);
    void sendActions(NSUInteger events, const id& event);
    void letGo(const id& event);

    std::vector<Registration> registrations_ {};
    NSUInteger state_ = Normal;
    bool tracking_ = false;
    bool touchInside_ = false;
};

extern const ClassDefinition UIButton_class;
extern const ClassDefinition UISwitch_class;

} // namespace platform
