#pragma once

#include "platform/runtime/weak.h"
#include "platform/uikit/touches.h"

#include <span>

namespace platform {

enum class GestureState : long { Possible = 0, Began = 1, Changed = 2, Ended = 3, Cancelled = 4, Failed = 5 };

/// Looks at touches and tells its targets when it recognizes something. It keeps neither its view nor its delegate nor
/// its targets; without its view it goes no further.
class UIGestureRecognizer : public NSObject {
public:
    static const ClassDefinition definition;

    GestureState state = GestureState::Possible;
    Weak<UIView> view {};
    Weak<NSObject> delegate {};
    bool enabled = true;
    bool cancelsTouchesInView = true;
    CGPoint location {}; ///< in the window

    void addTarget(const id& target, SEL action);
    void removeTarget(const id& target, SEL action);

    /// The touch has begun, moved or ended. Called while the gesture is possible or under way.
    virtual void track(const UITouch&) { }
    virtual void reset() { }

    /// Goes over to the state, tells the targets, and makes the other gestures of the touch fail. False when the view
    /// has gone, something else has the touch, or the delegate doesn't want it.
    bool enter(GestureState newState);
    void fail() noexcept { state = GestureState::Failed; }
    bool isOver() const noexcept { return state >= GestureState::Ended; }
    bool isUnderWay() const noexcept { return state == GestureState::Began || state == GestureState::Changed; }

private:
    std::vector<std::pair<Weak<NSObject>, SEL>> targets_;
};

/// While it lives, gestures that enter a state compete for this touch.
class TouchInView {
public:
    explicit TouchInView(UITouch& touch);
    TouchInView(const TouchInView&) = delete;
    TouchInView& operator=(const TouchInView&) = delete;
    ~TouchInView();

private:
    UITouch* const outer_;
};

/// Tells the view that the touch is no longer its own.
void cancelTouchInView(UITouch& touch);

/// Lets the gestures of the touched view, and of the views that it stands in, look at the touch.
void letGesturesLook(UITouch& touch, const id& event);

extern const std::span<const MethodDefinition> gestureMethods;
extern const ClassDefinition UILongPressGestureRecognizer_class;
extern const ClassDefinition UIPanGestureRecognizer_class;
extern const ClassDefinition UISwipeGestureRecognizer_class;
extern const ClassDefinition UITapGestureRecognizer_class;

} // namespace platform
