#include "platform/dispatch/queue.h"
#include "platform/runtime/message.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/window.h"

#include <cmath>

namespace platform {

namespace {

constexpr double slop = 10; ///< points that a finger may wander and still be taken to rest

double distance(CGPoint from, CGPoint to)
{
    return std::hypot(to.x - from.x, to.y - from.y);
}

class UITapGestureRecognizer : public UIGestureRecognizer {
public:
    NSUInteger numberOfTapsRequired = 1;
    NSUInteger numberOfTouchesRequired = 1;

    void track(const UITouch& touch) override
    {
        if (touch.phase == TouchPhase::Began)
            start_ = touch.location;
        else if (touch.phase == TouchPhase::Cancelled || distance(start_, touch.location) > slop)
            fail();
        else if (touch.phase == TouchPhase::Ended && touch.tapCount == numberOfTapsRequired)
            enter(GestureState::Ended);
    }

private:
    CGPoint start_ {};
};

class UILongPressGestureRecognizer : public UIGestureRecognizer {
public:
    double minimumPressDuration = 0.5;
    double allowableMovement = slop;

    void reset() override { ++press_; }

    void track(const UITouch& touch) override
    {
        switch (touch.phase) {
        case TouchPhase::Began:
            start_ = touch.location;
            dispatch_after(std::chrono::nanoseconds(std::llround(minimumPressDuration * 1e9)),
                dispatch_get_main_queue(),
                [self = Ref<UILongPressGestureRecognizer>(this), press = press_,
                    touch = Ref<UITouch>(const_cast<UITouch*>(&touch))] { self->heldLongEnough(press, *touch); });
            break;
        case TouchPhase::Moved:
        case TouchPhase::Stationary:
            if (isUnderWay())
                enter(GestureState::Changed);
            else if (distance(start_, touch.location) > allowableMovement)
                fail();
            break;
        case TouchPhase::Ended:
            isUnderWay() ? void(enter(GestureState::Ended)) : fail();
            ++press_;
            break;
        case TouchPhase::Cancelled:
            ++press_;
            break;
        }
    }

private:
    void heldLongEnough(unsigned press, UITouch& touch)
    {
        if (press != press_ || state != GestureState::Possible || touch.takenByGesture)
            return;
        {
            const TouchInView looking(touch);
            enter(GestureState::Began);
        }
        if (touch.takenByGesture)
            cancelTouchInView(touch);
    }

    CGPoint start_ {};
    unsigned press_ = 0;
};

class UIPanGestureRecognizer : public UIGestureRecognizer {
public:
    void reset() override { velocity_ = {}; }

    void track(const UITouch& touch) override
    {
        if (touch.phase == TouchPhase::Began) {
            start_ = last_ = touch.location;
            lastTime_ = touch.timestamp;
            return;
        }
        if (const double time = touch.timestamp - lastTime_; time > 0)
            velocity_ = { (touch.location.x - last_.x) / time, (touch.location.y - last_.y) / time };
        last_ = touch.location;
        lastTime_ = touch.timestamp;
        if (touch.phase == TouchPhase::Ended)
            isUnderWay() ? void(enter(GestureState::Ended)) : fail();
        else if (isUnderWay())
            enter(GestureState::Changed);
        else if (distance(start_, touch.location) > slop)
            enter(GestureState::Began);
    }

    CGPoint translationInView(const id&) const { return { last_.x - start_.x, last_.y - start_.y }; }
    void setTranslation(CGPoint translation, const id&)
    {
        start_ = { last_.x - translation.x, last_.y - translation.y };
    }
    CGPoint velocityInView(const id&) const { return velocity_; }

private:
    CGPoint start_ {};
    CGPoint last_ {};
    double lastTime_ = 0;
    CGPoint velocity_ {};
};

class UISwipeGestureRecognizer : public UIGestureRecognizer {
public:
    enum Direction : unsigned long { Right = 1, Left = 2, Up = 4, Down = 8 };

    NSUInteger direction = Right;
    NSUInteger numberOfTouchesRequired = 1;

    void track(const UITouch& touch) override
    {
        constexpr double longEnough = 40;
        constexpr double longestTime = 0.5;
        if (touch.phase == TouchPhase::Began) {
            start_ = touch.location;
            startTime_ = touch.timestamp;
            return;
        }
        const double x = touch.location.x - start_.x;
        const double y = touch.location.y - start_.y;
        if (touch.phase == TouchPhase::Cancelled || touch.timestamp - startTime_ > longestTime) {
            fail();
            return;
        }
        const bool across = std::abs(x) > 2 * std::abs(y);
        const bool upright = std::abs(y) > 2 * std::abs(x);
        const unsigned long towards = across ? (x > 0 ? Right : Left) : upright ? (y > 0 ? Down : Up) : 0UL;
        if ((direction & towards) != 0 && std::max(std::abs(x), std::abs(y)) >= longEnough)
            enter(GestureState::Ended);
        else if (touch.phase == TouchPhase::Ended)
            fail();
    }

private:
    CGPoint start_ {};
    double startTime_ = 0;
};

constexpr MethodDefinition tapMethods[] {
    getter<"numberOfTapsRequired", &UITapGestureRecognizer::numberOfTapsRequired>(),
    getter<"numberOfTouchesRequired", &UITapGestureRecognizer::numberOfTouchesRequired>(),
    setter<"setNumberOfTapsRequired:", &UITapGestureRecognizer::numberOfTapsRequired>(),
    setter<"setNumberOfTouchesRequired:", &UITapGestureRecognizer::numberOfTouchesRequired>(),
};
constexpr MethodDefinition longPressMethods[] {
    getter<"minimumPressDuration", &UILongPressGestureRecognizer::minimumPressDuration>(),
    setter<"setAllowableMovement:", &UILongPressGestureRecognizer::allowableMovement>(),
    setter<"setMinimumPressDuration:", &UILongPressGestureRecognizer::minimumPressDuration>(),
};
constexpr MethodDefinition panMethods[] {
    method<"setTranslation:inView:", &UIPanGestureRecognizer::setTranslation>(),
    method<"translationInView:", &UIPanGestureRecognizer::translationInView>(),
    method<"velocityInView:", &UIPanGestureRecognizer::velocityInView>(),
};
constexpr MethodDefinition swipeMethods[] {
    getter<"direction", &UISwipeGestureRecognizer::direction>(),
    setter<"setDirection:", &UISwipeGestureRecognizer::direction>(),
    setter<"setNumberOfTouchesRequired:", &UISwipeGestureRecognizer::numberOfTouchesRequired>(),
};

} // namespace

const ClassDefinition UITapGestureRecognizer_class { .name = "UITapGestureRecognizer",
    .superclass = &UIGestureRecognizer::definition,
    .allocate = allocate<UITapGestureRecognizer>,
    .methods = tapMethods };
const ClassDefinition UILongPressGestureRecognizer_class { .name = "UILongPressGestureRecognizer",
    .superclass = &UIGestureRecognizer::definition,
    .allocate = allocate<UILongPressGestureRecognizer>,
    .methods = longPressMethods };
const ClassDefinition UIPanGestureRecognizer_class { .name = "UIPanGestureRecognizer",
    .superclass = &UIGestureRecognizer::definition,
    .allocate = allocate<UIPanGestureRecognizer>,
    .methods = panMethods };
const ClassDefinition UISwipeGestureRecognizer_class { .name = "UISwipeGestureRecognizer",
    .superclass = &UIGestureRecognizer::definition,
    .allocate = allocate<UISwipeGestureRecognizer>,
    .methods = swipeMethods };

} // namespace platform
