#pragma once

#include "platform/handles/UIView.h"

namespace platform {

/// What happens to a control; to be joined.
enum class UIControlEvents : NSUInteger {
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
    AllTouchEvents = 0xFFF,
    AllEditingEvents = 0xF0000,
    AllEvents = 0xFFFFFFFF,
};
constexpr UIControlEvents operator|(UIControlEvents left, UIControlEvents right) noexcept
{
    return static_cast<UIControlEvents>(static_cast<NSUInteger>(left) | static_cast<NSUInteger>(right));
}

/// To be joined.
enum class UIControlState : NSUInteger { Normal = 0, Highlighted = 1 << 0, Disabled = 1 << 1, Selected = 1 << 2 };

class UIControl : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UIControl">(); }
    static UIControl withFrame(const CGRect& frame) { return initialised<UIControl, "initWithFrame:">(frame); }

    /// The target isn't kept. A nil one: whoever in the responder chain performs the action.
    void addTarget(const id& target, SEL action, UIControlEvents events) const
    {
        call<"addTarget:action:forControlEvents:">(target, action, events);
    }
    void removeTarget(const id& target, SEL action, UIControlEvents events) const
    {
        call<"removeTarget:action:forControlEvents:">(target, action, events);
    }
    void sendActions(UIControlEvents events) const { call<"sendActionsForControlEvents:">(events); }
    bool isEnabled() const { return call<"isEnabled", bool>(); }
    void setEnabled(bool enabled) const { call<"setEnabled:">(enabled); }
    bool isSelected() const { return call<"isSelected", bool>(); }
    void setSelected(bool selected) const { call<"setSelected:">(selected); }
    bool isHighlighted() const { return call<"isHighlighted", bool>(); }
    void setHighlighted(bool highlighted) const { call<"setHighlighted:">(highlighted); }
    UIControlState state() const { return call<"state", UIControlState>(); }
    bool isTracking() const { return call<"isTracking", bool>(); }
    bool isTouchInside() const { return call<"isTouchInside", bool>(); }
};

} // namespace platform
