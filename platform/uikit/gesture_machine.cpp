#include "platform/runtime/message.h"
#include "platform/uikit/gestures.h"

#include <algorithm>
#include <cassert>

namespace platform {

namespace {

using enum GestureState;

struct Transition {
    GestureState from;
    GestureState to;
    bool isTold; ///< the targets hear of it
};

/// Every way that a gesture can go.
constexpr Transition transitions[] {
    { Possible, Began, true },
    { Possible, Ended, true },
    { Possible, Failed, false },
    { Began, Changed, true },
    { Began, Ended, true },
    { Began, Cancelled, true },
    { Changed, Changed, true },
    { Changed, Ended, true },
    { Changed, Cancelled, true },
};

const Transition* transition(GestureState from, GestureState to)
{
    const auto* const found
        = std::ranges::find_if(transitions, [&](const Transition& row) { return row.from == from && row.to == to; });
    return found == std::end(transitions) ? nullptr : found;
}

bool isOver(GestureState state)
{
    return state >= Ended;
}

using Gestures = std::vector<Ref<GestureRecognizerObject>>;

/// All that have seen a touch and not yet forgotten it.
Gestures& contest()
{
    static auto* const gestures = new Gestures;
    return *gestures;
}

id asObject(const GestureRecognizerObject& gesture)
{
    return id(const_cast<GestureRecognizerObject*>(&gesture));
}

/// From their views.
void take(const std::vector<Ref<TouchObject>>& touches)
{
    for (const Ref<TouchObject>& touch : touches)
        if (!touch->isOver && !std::exchange(touch->takenByGesture, true) && touch->isKnownToView)
            cancelTouchInView(*touch);
}

template <Name Question> bool agrees(const GestureRecognizerObject& one, const GestureRecognizerObject& other)
{
    return ask<Question, bool>(one.delegate, asObject(one), asObject(other)).value_or(false);
}

} // namespace

bool GestureRecognizerObject::sharesTouchWith(const GestureRecognizerObject& other) const
{
    return std::ranges::any_of(touches_, [&](const Ref<TouchObject>& touch) {
        return std::ranges::find(other.touches_, touch) != other.touches_.end();
    });
}

bool GestureRecognizerObject::runsTogetherWith(const GestureRecognizerObject& other) const
{
    constexpr Name question = "gestureRecognizer:shouldRecognizeSimultaneouslyWithGestureRecognizer:";
    return agrees<question>(*this, other) || agrees<question>(other, *this);
}

bool GestureRecognizerObject::prevents(const GestureRecognizerObject& other) const
{
    return this != &other && sharesTouchWith(other) && canPrevent(other) && !runsTogetherWith(other);
}

bool GestureRecognizerObject::mustWaitFor(const GestureRecognizerObject& other) const
{
    // Of two that wait for each other the second one doesn't.
    if (this == &other || other.state_ != Possible
        || std::ranges::find(other.heldFor_, this, &Ref<GestureRecognizerObject>::get) != other.heldFor_.end())
        return false;
    const auto is = [&](const Weak<GestureRecognizerObject>& one) { return one.get().get() == &other; };
    return std::ranges::any_of(mustFail_, is)
        || (sharesTouchWith(other)
            && (agrees<"gestureRecognizer:shouldRequireFailureOfGestureRecognizer:">(*this, other)
                || agrees<"gestureRecognizer:shouldBeRequiredToFailByGestureRecognizer:">(other, *this)));
}

GestureRecognizerObject::Verdict GestureRecognizerObject::askOthers()
{
    const Gestures others = contest();
    for (const Ref<GestureRecognizerObject>& other : others)
        if ((other->isUnderWay() || other->state_ == Ended) && other->prevents(*this))
            return Verdict::Refused;
    std::ranges::copy_if(others, std::back_inserter(heldFor_),
        [this](const Ref<GestureRecognizerObject>& other) { return mustWaitFor(*other); });
    if (!heldFor_.empty())
        return Verdict::Held;
    return viewsAgree() && ask<"gestureRecognizerShouldBegin:", bool>(delegate, id(this)).value_or(true)
        ? Verdict::Given
        : Verdict::Refused;
}

/// The view that was touched, and those that it stands in as far as the gesture's own, have a say besides the delegate.
bool GestureRecognizerObject::viewsAgree() const
{
    const Ref<ViewObject> own = view.get();
    const id asked = delegate;
    for (Ref<ViewObject> touched = touches_.back()->view; touched; touched = Ref<ViewObject>(touched->superview)) {
        if (id(touched) != asked && !send<"gestureRecognizerShouldBegin:", bool>(touched, asObject(*this)))
            return false;
        if (touched == own)
            return true;
    }
    return true;
}

bool GestureRecognizerObject::enter(GestureState wanted)
{
    const Ref<GestureRecognizerObject> self(this);
    const Transition* const step = transition(state_, wanted);
    assert(step && "no gesture can go from here to there");
    if (!step || !isInContest())
        return false;
    const bool recognizes = state_ == Possible && wanted != Failed;
    if (recognizes) {
        if (!heldFor_.empty())
            return false;
        switch (view.get() ? askOthers() : Verdict::Refused) {
        case Verdict::Refused:
            fail();
            return false;
        case Verdict::Held:
            held_ = wanted;
            return false;
        case Verdict::Given:
            break;
        }
    }
    state_ = wanted;
    held_ = Possible;
    heldFor_.clear();
    if (recognizes || wanted == Failed)
        tellOthers();
    const auto touches = touches_; // an action may end all this
    if (step->isTold)
        tellTargets();
    if (recognizes && cancelsTouchesInView)
        take(touches);
    settle();
    return true;
}

void GestureRecognizerObject::fail()
{
    if (state_ == Possible)
        enter(Failed);
}

/// Those that it excludes fail, and so do those that have waited for it in vain; its own failure lets these go.
void GestureRecognizerObject::tellOthers()
{
    const Gestures others = contest();
    for (const Ref<GestureRecognizerObject>& other : others) {
        const bool waited = std::erase(other->heldFor_, Ref<GestureRecognizerObject>(this)) > 0;
        if (state_ != Failed) {
            if (other->state_ == Possible && (waited || prevents(*other)))
                other->fail();
        } else if (waited && other->heldFor_.empty()) {
            other->enter(std::exchange(other->held_, Possible));
        }
    }
}

void GestureRecognizerObject::tellTargets()
{
    const id self(this);
    const auto targets = targets_;
    for (const auto& [target, action] : targets) {
        const id receiver = target;
        const auto types = class_getMethodTypes(object_getClass(receiver), action);
        if (types == "v@:@")
            sendSelector<void>(receiver, action, self);
        else if (types == "v@:")
            sendSelector<void>(receiver, action);
    }
}

void GestureRecognizerObject::begin(TouchObject& touch)
{
    if (held_ != Possible)
        return;
    if (touches_.empty())
        contest().emplace_back(this);
    touches_.emplace_back(&touch);
}

void GestureRecognizerObject::look(const TouchObject& touch)
{
    if (touches_.empty() || touches_.back().get() != &touch)
        return;
    location_ = touch.location;
    if (touch.phase == TouchPhase::Cancelled || !view.get()) {
        abandon();
        return;
    }
    if (isOver(state_) || held_ == Ended)
        return;
    switch (touch.phase) {
    case TouchPhase::Began:
        return began(touch);
    case TouchPhase::Moved:
    case TouchPhase::Stationary:
        return moved(touch);
    case TouchPhase::Ended:
        if (held_ == Possible)
            ended(touch);
        return;
    case TouchPhase::Cancelled:
        return;
    }
}

/// All have looked at the touch's last phase.
void GestureRecognizerObject::finish(const TouchObject& touch)
{
    if (touches_.empty() || touches_.back().get() != &touch)
        return;
    if (isUnderWay())
        enter(Ended); // what it has waited for failed after its own turn
    else if (held_ != Ended && !awaitsTouch())
        fail();
}

void GestureRecognizerObject::settle()
{
    if (!isOver(state_) || (!touches_.empty() && !touches_.back()->isOver))
        return;
    state_ = held_ = Possible;
    heldFor_.clear();
    touches_.clear();
    forget();
    std::erase(contest(), Ref<GestureRecognizerObject>(this));
}

void GestureRecognizerObject::abandon()
{
    const Ref<GestureRecognizerObject> self(this);
    if (!isInContest())
        return;
    if (isUnderWay())
        enter(Cancelled);
    else
        fail();
    touches_.clear();
    settle();
}

void GestureRecognizerObject::setEnabled(bool enabled)
{
    enabled_ = enabled;
    if (!enabled)
        abandon();
}

void GestureRecognizerObject::requireToFail(const id& other)
{
    if (const Ref<GestureRecognizerObject> gesture(as<GestureRecognizerObject>(other));
        gesture && gesture.get() != this)
        mustFail_.emplace_back(gesture);
}

void GestureRecognizerObject::addTarget(const id& target, SEL action)
{
    targets_.emplace_back(target, action);
}

void GestureRecognizerObject::removeTarget(const id& target, SEL action)
{
    std::erase_if(targets_, [&](const auto& present) {
        return (!target || present.first.get() == target) && (!action || present.second == action);
    });
}

void letGesturesLook(TouchObject& touch)
{
    const Gestures looking = contest();
    for (const Ref<GestureRecognizerObject>& gesture : looking)
        gesture->look(touch);
    if (touch.phase != TouchPhase::Ended && touch.phase != TouchPhase::Cancelled)
        return;
    for (const Ref<GestureRecognizerObject>& gesture : looking)
        gesture->finish(touch);
}

void letGesturesRest(TouchObject& touch)
{
    touch.isOver = true;
    const Gestures seen = contest();
    for (const Ref<GestureRecognizerObject>& gesture : seen)
        gesture->settle();
}

} // namespace platform
