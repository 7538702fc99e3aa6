#include "platform/dispatch/queue.h"
#include "platform/runtime/message.h"
#include "platform/uikit/pan_gesture.h"
#include "platform/uikit/window.h"

#include <cmath>

namespace platform {

namespace {

double distance(CGPoint from, CGPoint to)
{
    return std::hypot(to.x - from.x, to.y - from.y);
}

/// Calls the function on the main queue.
template <class Function> void after(double seconds, Function function)
{
    dispatch_after(
        std::chrono::nanoseconds(std::llround(seconds * 1e9)), dispatch_get_main_queue(), std::move(function));
}

class TapGestureRecognizerObject : public GestureRecognizerObject {
public:
    NSUInteger numberOfTapsRequired = 1;
    NSUInteger numberOfTouchesRequired = 1;

    /// One tap doesn't keep a second from making two of them.
    bool canPrevent(const GestureRecognizerObject& other) const override
    {
        const auto* const tap = dynamic_cast<const TapGestureRecognizerObject*>(&other);
        return !tap || tap->numberOfTapsRequired <= numberOfTapsRequired;
    }

protected:
    void began(const TouchObject& touch) override
    {
        constexpr double farthest = 40;
        ++moment_;
        if (taps_ > 0 && distance(start_, touch.location) > farthest)
            fail();
        start_ = touch.location;
    }
    void moved(const TouchObject& touch) override
    {
        if (distance(start_, touch.location) > gestureSlop)
            fail();
    }
    void ended(const TouchObject& touch) override
    {
        constexpr double longestPause = 0.35;
        if (distance(start_, touch.location) > gestureSlop)
            fail();
        else if (++taps_ >= numberOfTapsRequired)
            enter(GestureState::Ended);
        else
            after(longestPause, [self = Ref<TapGestureRecognizerObject>(this), moment = ++moment_] {
                if (self->isInContest() && self->moment_ == moment)
                    self->fail();
            });
    }
    bool awaitsTouch() const override { return taps_ > 0 && taps_ < numberOfTapsRequired; }
    void forget() override
    {
        taps_ = 0;
        ++moment_;
    }

private:
    CGPoint start_ {}; ///< of the last touch
    NSUInteger taps_ = 0;
    unsigned moment_ = 0; ///< tells a timer whether anything has happened since
};

class LongPressGestureRecognizerObject : public GestureRecognizerObject {
public:
    double minimumPressDuration = 0.5;
    double allowableMovement = gestureSlop;

protected:
    void began(const TouchObject& touch) override
    {
        start_ = touch.location;
        after(minimumPressDuration, [self = Ref<LongPressGestureRecognizerObject>(this), press = ++press_] {
            if (self->isInContest() && self->press_ == press && self->state() == GestureState::Possible)
                self->enter(GestureState::Began);
        });
    }
    void moved(const TouchObject& touch) override
    {
        if (isUnderWay())
            enter(GestureState::Changed);
        else if (distance(start_, touch.location) > allowableMovement)
            fail();
    }
    void ended(const TouchObject&) override
    {
        ++press_;
        enter(isUnderWay() ? GestureState::Ended : GestureState::Failed);
    }

private:
    CGPoint start_ {};
    unsigned press_ = 0; ///< tells a timer whether its press is still the present one
};

class SwipeGestureRecognizerObject : public GestureRecognizerObject {
public:
    enum Direction : unsigned long { Right = 1, Left = 2, Up = 4, Down = 8 };

    NSUInteger direction = Right;
    NSUInteger numberOfTouchesRequired = 1;

protected:
    void began(const TouchObject& touch) override
    {
        start_ = touch.location;
        startTime_ = touch.timestamp;
    }
    void moved(const TouchObject& touch) override
    {
        constexpr double longEnough = 40;
        constexpr double longestTime = 0.5;
        const double x = touch.location.x - start_.x;
        const double y = touch.location.y - start_.y;
        const bool across = std::abs(x) > 2 * std::abs(y);
        const bool upright = std::abs(y) > 2 * std::abs(x);
        const unsigned long towards = across ? (x > 0 ? Right : Left) : upright ? (y > 0 ? Down : Up) : 0UL;
        if (touch.timestamp - startTime_ > longestTime)
            fail();
        else if ((direction & towards) != 0 && std::max(std::abs(x), std::abs(y)) >= longEnough)
            enter(GestureState::Ended);
    }
    void ended(const TouchObject& touch) override { moved(touch); }

private:
    CGPoint start_ {};
    double startTime_ = 0;
};

constexpr MethodDefinition tapMethods[] {
    getter<"numberOfTapsRequired", &TapGestureRecognizerObject::numberOfTapsRequired>(),
    getter<"numberOfTouchesRequired", &TapGestureRecognizerObject::numberOfTouchesRequired>(),
    setter<"setNumberOfTapsRequired:", &TapGestureRecognizerObject::numberOfTapsRequired>(),
    setter<"setNumberOfTouchesRequired:", &TapGestureRecognizerObject::numberOfTouchesRequired>(),
};
constexpr MethodDefinition longPressMethods[] {
    getter<"minimumPressDuration", &LongPressGestureRecognizerObject::minimumPressDuration>(),
    setter<"setAllowableMovement:", &LongPressGestureRecognizerObject::allowableMovement>(),
    setter<"setMinimumPressDuration:", &LongPressGestureRecognizerObject::minimumPressDuration>(),
};
constexpr MethodDefinition panMethods[] {
    method<"setTranslation:inView:", &PanGestureRecognizerObject::setTranslation>(),
    method<"translationInView:", &PanGestureRecognizerObject::translationInView>(),
    method<"velocityInView:", &PanGestureRecognizerObject::velocityInView>(),
};
constexpr MethodDefinition swipeMethods[] {
    getter<"direction", &SwipeGestureRecognizerObject::direction>(),
    setter<"setDirection:", &SwipeGestureRecognizerObject::direction>(),
    setter<"setNumberOfTouchesRequired:", &SwipeGestureRecognizerObject::numberOfTouchesRequired>(),
};

} // namespace

void PanGestureRecognizerObject::began(const TouchObject& touch)
{
    start_ = last_ = touch.location;
    lastTime_ = touch.timestamp;
    velocity_ = {};
}

void PanGestureRecognizerObject::moved(const TouchObject& touch)
{
    follow(touch);
    if (isUnderWay())
        enter(GestureState::Changed);
    else if (distance(start_, touch.location) > gestureSlop)
        enter(GestureState::Began);
}

void PanGestureRecognizerObject::ended(const TouchObject& touch)
{
    follow(touch);
    enter(isUnderWay() ? GestureState::Ended : GestureState::Failed);
}

/// The velocity is that of the last movement until the finger has rested for a while: a lift mostly repeats the place
/// that it was moved to.
void PanGestureRecognizerObject::follow(const TouchObject& touch)
{
    constexpr double rest = 0.1;
    const double time = touch.timestamp - lastTime_;
    const CGPoint way { touch.location.x - last_.x, touch.location.y - last_.y };
    if (way != CGPoint {}) {
        if (time > 0)
            velocity_ = { way.x / time, way.y / time };
        last_ = touch.location;
        lastTime_ = touch.timestamp;
    } else if (time > rest) {
        velocity_ = {};
    }
}

const ClassDefinition UITapGestureRecognizer_class { .name = "UITapGestureRecognizer",
    .superclass = &GestureRecognizerObject::definition,
    .allocate = allocate<TapGestureRecognizerObject>,
    .methods = tapMethods };
const ClassDefinition UILongPressGestureRecognizer_class { .name = "UILongPressGestureRecognizer",
    .superclass = &GestureRecognizerObject::definition,
    .allocate = allocate<LongPressGestureRecognizerObject>,
    .methods = longPressMethods };
const ClassDefinition UIPanGestureRecognizer_class { .name = "UIPanGestureRecognizer",
    .superclass = &GestureRecognizerObject::definition,
    .allocate = allocate<PanGestureRecognizerObject>,
    .methods = panMethods };
const ClassDefinition UISwipeGestureRecognizer_class { .name = "UISwipeGestureRecognizer",
    .superclass = &GestureRecognizerObject::definition,
    .allocate = allocate<SwipeGestureRecognizerObject>,
    .methods = swipeMethods };

} // namespace platform
