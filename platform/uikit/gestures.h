#pragma once

#include "platform/runtime/weak.h"
#include "platform/uikit/touches.h"

#include <span>

namespace platform {

enum class GestureState : long { Possible = 0, Began = 1, Changed = 2, Ended = 3, Cancelled = 4, Failed = 5 };

/// Looks at touches and tells its targets when it recognizes something. It keeps neither its view nor its delegate nor
/// its targets; without its view it goes no further.
///
/// A kind of gesture says what it makes of the phases of a touch. Which state follows which, who else has a say, and
/// what ends a gesture from outside is decided here for all kinds.
class GestureRecognizerObject : public NSObject {
public:
    static const ClassDefinition definition;

    Weak<ViewObject> view {};
    Weak<NSObject> delegate {};
    bool cancelsTouchesInView = true;

    GestureState state() const noexcept { return state_; }
    bool isUnderWay() const noexcept { return state_ == GestureState::Began || state_ == GestureState::Changed; }
    bool isEnabled() const noexcept { return enabled_; }
    /// Disabling ends what is under way; the rest of the touch is not looked at.
    void setEnabled(bool enabled);
    /// The touch that it has been given last; null when it has seen none.
    Ref<TouchObject> lastTouch() const { return touches_.empty() ? nullptr : touches_.back(); }
    /// Where the touch is, in the window.
    CGPoint location() const noexcept { return location_; }

    void addTarget(const id& target, SEL action);
    void removeTarget(const id& target, SEL action);
    /// While the other one can still recognize something in the same touches, this one waits.
    void requireToFail(const id& other);

    /// Whether this one's recognition makes the other one fail, unless a delegate lets both go on.
    virtual bool canPrevent(const GestureRecognizerObject&) const { return true; }

    /// A touch's way: begin() gives it to the gesture, which looks at every phase; after the last one, when all have
    /// looked, what it can't become any more is settled, and when the touch is over, it is as it was before.
    void begin(TouchObject& touch);
    void look(const TouchObject& touch);
    void finish(const TouchObject& touch);
    void settle();
    /// Cancels what is under way and forgets the touches.
    void abandon();

protected:
    virtual void began(const TouchObject& touch) = 0;
    virtual void moved(const TouchObject& touch) = 0;
    virtual void ended(const TouchObject& touch) = 0;
    /// Whether what has been seen, and is over, may still become the gesture by a further touch.
    virtual bool awaitsTouch() const { return false; }
    virtual void forget() { }

    /// Goes over to the state and tells the targets. False where something else has the touch, where the delegate
    /// doesn't want it, and while others must fail first; then it enters the state by itself once they have.
    bool enter(GestureState wanted);
    /// Only what is still possible fails.
    void fail();
    /// Whether it has seen a touch and not yet forgotten it.
    bool isInContest() const noexcept { return !touches_.empty(); }

private:
    enum class Verdict { Given, Held, Refused };
    Verdict askOthers();
    bool viewsAgree() const;
    bool sharesTouchWith(const GestureRecognizerObject& other) const;
    bool runsTogetherWith(const GestureRecognizerObject& other) const;
    bool prevents(const GestureRecognizerObject& other) const;
    bool mustWaitFor(const GestureRecognizerObject& other) const;
    void tellOthers();
    void tellTargets();

    GestureState state_ = GestureState::Possible;
    bool enabled_ = true;
    CGPoint location_ {};
    std::vector<Ref<TouchObject>>
        touches_ {}; ///< those that it has been given since it was last as before, in their order
    std::vector<std::pair<Weak<NSObject>, SEL>> targets_ {};
    std::vector<Weak<GestureRecognizerObject>> mustFail_ {};
    GestureState held_ = GestureState::Possible; ///< what it enters once those of `heldFor_` have failed
    std::vector<Ref<GestureRecognizerObject>> heldFor_ {};
};

/// Tells the view that the touch is no longer its own.
void cancelTouchInView(TouchObject& touch);

/// Gives a touch that begins to the gestures of its view and of the views that it stands in.
void beginGestures(TouchObject& touch);
/// The touch has gone into its present phase.
void letGesturesLook(TouchObject& touch);
/// The touch is over, and its view knows.
void letGesturesRest(TouchObject& touch);
/// The view leaves its window.
void abandonGestures(const ViewObject& view);

extern const std::span<const MethodDefinition> gestureMethods;
extern const ClassDefinition UILongPressGestureRecognizer_class;
extern const ClassDefinition UIPanGestureRecognizer_class;
extern const ClassDefinition UISwipeGestureRecognizer_class;
extern const ClassDefinition UITapGestureRecognizer_class;

} // namespace platform
