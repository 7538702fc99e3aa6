#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/weak.h"
#include "support/view_test.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;
using support::classObject;

/// Writes down what it is told.
struct WitnessFields {
    std::string log;
};

template <Name Word> void note(const id& self, SEL, const id& gesture)
{
    fieldsOf<WitnessFields>(self).log
        += std::string(Word.view()) + std::to_string(send<"state", NSInteger>(gesture)) + " ";
}

template <Name Word> void touch(const id& self, SEL, const id&, const id&)
{
    fieldsOf<WitnessFields>(self).log += std::string(Word.view()) + " ";
}

void turnOff(const id& self, SEL, const id& gesture)
{
    fieldsOf<WitnessFields>(self).log += "off ";
    send<"setEnabled:", void>(gesture, false);
}

constexpr MethodDefinition witnessMethods[] {
    method<"double:", &note<"double">>(),
    method<"hold:", &note<"hold">>(),
    method<"off:", &turnOff>(),
    method<"pan:", &note<"pan">>(),
    method<"swipe:", &note<"swipe">>(),
    method<"tap:", &note<"tap">>(),
    method<"touchesBegan:withEvent:", &touch<"began">>(),
    method<"touchesCancelled:withEvent:", &touch<"cancelled">>(),
    method<"touchesEnded:withEvent:", &touch<"ended">>(),
    method<"touchesMoved:withEvent:", &touch<"moved">>(),
};
const ClassDefinition Witness_class { .name = "Witness", .superclassName = "UIView", .methods = witnessMethods };

class Gestures : public support::ViewTest {
protected:
    id window = makeWindow();
    id view;

    Gestures()
    {
        registerClass(Witness_class);
        view = send<"initWithFrame:">(send<"alloc">(classObject<"Witness">()), CGRectMake(50, 50, 200, 100));
        send<"addSubview:", void>(window, view);
    }

    id add(const char* cls, const char* action) const
    {
        const id gesture
            = send<"initWithTarget:action:">(send<"alloc">(id(objc_getClass(cls))), view, sel_registerName(action));
        send<"addGestureRecognizer:", void>(view, gesture);
        return gesture;
    }

    /// One phase after the other, 10 ms apart, so far to the right of a place in the view.
    std::string play(std::initializer_list<std::pair<TouchKind, double>> phases) const
    {
        fieldsOf<WitnessFields>(view).log.clear();
        for (const auto& [kind, x] : phases) {
            touchScreenAt({ 60 + x, 60 }, kind);
            advanceClock(10ms);
        }
        return fieldsOf<WitnessFields>(view).log;
    }

    std::string taps(int count, std::chrono::milliseconds pause) const
    {
        advanceClock(1s);
        fieldsOf<WitnessFields>(view).log.clear();
        while (count-- > 0) {
            touchScreenAt({ 60, 60 }, TouchKind::Began);
            touchScreenAt({ 60, 60 }, TouchKind::Ended);
            advanceClock(pause);
        }
        return fieldsOf<WitnessFields>(view).log;
    }

    /// A finger that goes from point to point, 50 ms apart.
    std::string drag(std::initializer_list<CGPoint> points) const
    {
        fieldsOf<WitnessFields>(view).log.clear();
        TouchKind kind = TouchKind::Began;
        for (const CGPoint& point : points) {
            touchScreenAt(point, std::exchange(kind, TouchKind::Moved));
            advanceClock(50ms);
        }
        touchScreenAt(*(points.end() - 1), TouchKind::Ended);
        advanceClock(1s);
        return fieldsOf<WitnessFields>(view).log;
    }
};

TEST_F(Gestures, ACancelledTouchCancelsWhatIsUnderWayAndNothingElse)
{
    const id pan = add("UIPanGestureRecognizer", "pan:");
    add("UITapGestureRecognizer", "tap:");
    add("UILongPressGestureRecognizer", "hold:");
    EXPECT_EQ(play({ { TouchKind::Began, 0 }, { TouchKind::Moved, 30 }, { TouchKind::Moved, 40 },
                  { TouchKind::Cancelled, 40 } }),
        "began pan1 cancelled pan2 pan4 ");
    EXPECT_EQ(play({ { TouchKind::Began, 0 }, { TouchKind::Moved, 5 }, { TouchKind::Cancelled, 5 } }),
        "began moved cancelled ");
    EXPECT_EQ(play({ { TouchKind::Began, 0 }, { TouchKind::Moved, 30 }, { TouchKind::Began, 0 } }),
        "began pan1 cancelled pan4 began ")
        << "a finger that never ended";
    EXPECT_EQ((send<"state", NSInteger>(pan)), 0);
}

TEST_F(Gestures, EveryTapCountsForASingleTapAndEverySecondForADouble)
{
    add("UITapGestureRecognizer", "tap:");
    EXPECT_EQ(taps(4, 100ms), "began tap3 cancelled began tap3 cancelled began tap3 cancelled began tap3 cancelled ");
    const id twice = add("UITapGestureRecognizer", "double:");
    send<"setNumberOfTapsRequired:", void>(twice, NSUInteger { 2 });
    EXPECT_EQ(
        taps(4, 100ms), "began tap3 cancelled began double3 cancelled began tap3 cancelled began double3 cancelled ");
    EXPECT_EQ(taps(2, 400ms), "began tap3 cancelled began tap3 cancelled ") << "too slow for a double";
}

TEST_F(Gestures, ARecognitionIsHeldUntilThoseItWaitsForHaveFailed)
{
    const id once = add("UITapGestureRecognizer", "tap:");
    const id twice = add("UITapGestureRecognizer", "double:");
    send<"setNumberOfTapsRequired:", void>(twice, NSUInteger { 2 });
    send<"requireGestureRecognizerToFail:", void>(once, twice);
    EXPECT_EQ(taps(1, 349ms), "began ended ");
    advanceClock(1ms);
    EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began ended tap3 ");
    EXPECT_EQ(taps(2, 100ms), "began ended began double3 cancelled ");
    advanceClock(1s);
    EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began ended began double3 cancelled ") << "the single tap failed";
    send<"setEnabled:", void>(twice, false);
    EXPECT_EQ(taps(1, 100ms), "began tap3 cancelled ") << "who looks at nothing holds nobody up";
    send<"setEnabled:", void>(twice, true);
    send<"removeGestureRecognizer:", void>(view, twice);
    EXPECT_EQ(taps(1, 100ms), "began tap3 cancelled ") << "nor who is attached to nothing";
}

TEST_F(Gestures, APanThatWaitsForASwipeStartsWhenTheSwipeHasFailed)
{
    const id pan = add("UIPanGestureRecognizer", "pan:");
    const id swipe = add("UISwipeGestureRecognizer", "swipe:");
    send<"requireGestureRecognizerToFail:", void>(pan, swipe);
    EXPECT_EQ(drag({ { 60, 60 }, { 80, 60 }, { 120, 60 }, { 130, 60 } }), "began moved swipe3 cancelled ");
    EXPECT_EQ(drag({ { 60, 60 }, { 80, 60 }, { 81, 60 } }), "began moved moved ended ") << "over before it could begin";
    advanceClock(1s);
    fieldsOf<WitnessFields>(view).log.clear();
    touchScreenAt({ 60, 60 }, TouchKind::Began);
    touchScreenAt({ 80, 60 }, TouchKind::Moved);
    advanceClock(600ms);
    touchScreenAt({ 85, 60 }, TouchKind::Moved);
    touchScreenAt({ 85, 60 }, TouchKind::Ended);
    EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began moved pan1 cancelled pan3 ");
}

TEST_F(Gestures, WhatIsDisabledOrDetachedInTheMiddleIsCancelledAndOver)
{
    const id pan = add("UIPanGestureRecognizer", "pan:");
    const std::function<void()> interruptions[] {
        [&] {
            send<"setEnabled:", void>(pan, false);
            send<"setEnabled:", void>(pan, true);
        },
        [&] {
            send<"removeGestureRecognizer:", void>(view, pan);
            send<"addGestureRecognizer:", void>(view, pan);
        },
        [&] {
            send<"removeFromSuperview", void>(view);
            send<"addSubview:", void>(window, view);
        },
    };
    for (const auto& interrupt : interruptions) {
        fieldsOf<WitnessFields>(view).log.clear();
        touchScreenAt({ 60, 60 }, TouchKind::Began);
        touchScreenAt({ 90, 60 }, TouchKind::Moved);
        interrupt();
        touchScreenAt({ 120, 60 }, TouchKind::Moved);
        touchScreenAt({ 120, 60 }, TouchKind::Ended);
        EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began pan1 cancelled pan4 ");
        EXPECT_EQ(drag({ { 60, 60 }, { 90, 60 } }), "began pan1 cancelled pan3 ") << "the next touch is a new one";
        EXPECT_EQ((send<"state", NSInteger>(pan)), 0);
    }
}

TEST_F(Gestures, TheVelocityAtTheLiftIsThatOfTheMovement)
{
    const id pan = add("UIPanGestureRecognizer", "pan:");
    const auto velocityAfterRest = [&](std::chrono::milliseconds rest) {
        touchScreenAt({ 60, 60 }, TouchKind::Began);
        for (const double x : { 80.0, 100.0 }) {
            advanceClock(20ms);
            touchScreenAt({ x, 60 }, TouchKind::Moved);
        }
        advanceClock(rest);
        touchScreenAt({ 100, 60 }, TouchKind::Ended);
        return send<"velocityInView:", CGPoint>(pan, view);
    };
    EXPECT_NEAR(velocityAfterRest(0ms).x, 1000, 1e-6);
    EXPECT_NEAR(velocityAfterRest(20ms).x, 1000, 1e-6);
    EXPECT_EQ(velocityAfterRest(200ms).x, 0) << "it has come to rest";
}

TEST_F(Gestures, AnActionThatDisablesItsGestureStillTakesTheTouch)
{
    const id tap = add("UITapGestureRecognizer", "off:");
    EXPECT_EQ(taps(1, 10ms), "began off cancelled ");
    EXPECT_FALSE((send<"isEnabled", bool>(tap)));
    EXPECT_EQ(taps(1, 10ms), "began ended ");
}

/// What the application's events hold; the application itself sends them on.
std::string eventLog;
void (*stockSendEvent)(const id&, SEL, const id&) = nullptr;

void noteEvent(const id& self, SEL cmd, const id& event)
{
    const id touch = send<"anyObject">(send<"allTouches">(event));
    eventLog += std::to_string(send<"type", NSInteger>(event)) + ":"
        + std::to_string(itemsOf(send<"allObjects">(send<"allTouches">(event))).size()) + ":"
        + std::to_string(send<"phase", NSInteger>(touch)) + (send<"window">(touch) ? " " : "- ");
    stockSendEvent(self, cmd, event);
}

TEST_F(Gestures, EveryTouchIsAnEventOfTheApplication)
{
    MSHookMessageEx(classNamed<"UIApplication">(), sel_registerName("sendEvent:"), reinterpret_cast<IMP>(&noteEvent),
        reinterpret_cast<IMP*>(&stockSendEvent));
    taps(1, 10ms);
    send<"setHidden:", void>(window, true);
    taps(1, 10ms);
    EXPECT_EQ(eventLog, "0:1:0 0:1:3 0:1:0- 0:1:3- ") << "also where no window is hit";
}

TEST_F(Gestures, TouchesReachTheViewUnderTheFingerAlone)
{
    EXPECT_EQ(drag({ { 60, 60 }, { 70, 60 } }), "began moved ended ");
    EXPECT_EQ(drag({ { 10, 10 } }), "");
    send<"setUserInteractionEnabled:", void>(view, false);
    EXPECT_EQ(drag({ { 60, 60 } }), "");
}

TEST_F(Gestures, EachKnowsItsMovement)
{
    add("UITapGestureRecognizer", "tap:");
    add("UILongPressGestureRecognizer", "hold:");
    add("UIPanGestureRecognizer", "pan:");
    EXPECT_EQ(drag({ { 60, 60 } }), "began tap3 cancelled ");
    EXPECT_EQ(drag({ { 60, 60 }, { 90, 60 }, { 95, 60 } }), "began pan1 cancelled pan2 pan3 ");
    fieldsOf<WitnessFields>(view).log.clear();
    touchScreenAt({ 60, 60 }, TouchKind::Began);
    advanceClock(499ms);
    EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began ");
    advanceClock(1ms);
    EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began hold1 cancelled ");
    touchScreenAt({ 120, 60 }, TouchKind::Moved);
    touchScreenAt({ 120, 60 }, TouchKind::Ended);
    EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began hold1 cancelled hold2 hold3 ") << "no pan any more";
}

TEST_F(Gestures, ASwipeWantsItsDirectionAndSpeed)
{
    const id swipe = add("UISwipeGestureRecognizer", "swipe:");
    send<"setDirection:", void>(swipe, NSUInteger { 8 });
    EXPECT_EQ(drag({ { 60, 60 }, { 60, 90 }, { 60, 130 } }), "began moved swipe3 cancelled ");
    EXPECT_EQ(drag({ { 60, 60 }, { 120, 60 } }), "began moved ended ") << "across";
    EXPECT_EQ(drag({ { 60, 60 }, { 60, 62 }, { 60, 64 }, { 60, 66 }, { 60, 68 }, { 60, 70 }, { 60, 72 }, { 60, 74 },
                       { 60, 76 }, { 60, 78 }, { 60, 80 }, { 60, 82 }, { 60, 130 } })
                  .find("swipe"),
        std::string::npos)
        << "too slow";
}

/// A delegate that says yes to some questions and writes down which it was asked.
struct Judgement {
    std::string yes;
    std::string asked;
};

template <Name Word> bool judge(const id& self, SEL, const id&, const id&)
{
    Judgement& judgement = fieldsOf<Judgement>(self);
    judgement.asked += std::string(Word.view()) + " ";
    return judgement.yes.find(Word.view()) != std::string::npos;
}

bool judgeBeginning(const id& self, SEL cmd, const id& gesture)
{
    return judge<"begin">(self, cmd, gesture, nil);
}

constexpr MethodDefinition judgeMethods[] {
    method<"gestureRecognizer:shouldBeRequiredToFailByGestureRecognizer:", &judge<"required">>(),
    method<"gestureRecognizer:shouldReceiveTouch:", &judge<"receive">>(),
    method<"gestureRecognizer:shouldRecognizeSimultaneouslyWithGestureRecognizer:", &judge<"together">>(),
    method<"gestureRecognizer:shouldRequireFailureOfGestureRecognizer:", &judge<"wait">>(),
    method<"gestureRecognizerShouldBegin:", &judgeBeginning>(),
};
const ClassDefinition Judge_class { .name = "Judge", .methods = judgeMethods };

TEST_F(Gestures, TheDelegateIsAskedInOrderAndItsWordHolds)
{
    registerClass(Judge_class);
    const id delegate = send<"new">(classObject<"Judge">());
    const id pan = add("UIPanGestureRecognizer", "pan:");
    const id swipe = add("UISwipeGestureRecognizer", "swipe:");
    send<"setDelegate:", void>(pan, delegate);
    const struct {
        const char* yes;
        const char* told;
        const char* asked;
    } cases[] {
        { "", "began moved swipe3 cancelled ", "receive " },
        { "receive", "began moved swipe3 cancelled ", "receive wait begin " },
        { "receive begin", "began pan1 cancelled pan2 pan3 ", "receive wait begin together " },
        { "receive begin wait", "began moved swipe3 cancelled ", "receive wait " },
        { "receive begin together", "began pan1 cancelled pan2 swipe3 pan3 ", "receive wait begin together together " },
        { "receive begin required", "began pan1 cancelled pan2 pan3 ", "receive wait begin together " },
    };
    for (const auto& [yes, told, asked] : cases) {
        fieldsOf<Judgement>(delegate) = { yes, "" };
        EXPECT_EQ(drag({ { 60, 60 }, { 80, 60 }, { 120, 60 } }), told) << yes;
        EXPECT_EQ(fieldsOf<Judgement>(delegate).asked, asked) << yes;
    }
    send<"setDelegate:", void>(pan, nil);
    send<"setDelegate:", void>(swipe, delegate);
    fieldsOf<Judgement>(delegate) = { "receive begin required", "" };
    EXPECT_EQ(drag({ { 60, 60 }, { 80, 60 }, { 120, 60 } }), "began moved swipe3 cancelled ") << "the other's demand";
}

/// What a test lets go of while a finger is down. Its delegate's answers and its actions may do so too.
struct Fleeting {
    id view {};
    id gesture {};
    id target {};
    std::string log {};
};
Fleeting* fleeting = nullptr;

template <id Fleeting::*Part> void drop(const id&, SEL, const id&)
{
    fleeting->log += "told ";
    fleeting->*Part = nil;
}

bool dropView(const id&, SEL, const id&, const id&)
{
    fleeting->log += "asked ";
    send<"removeFromSuperview", void>(fleeting->view);
    fleeting->view = nil;
    return true;
}

constexpr MethodDefinition listenerMethods[] {
    method<"dropGesture:", &drop<&Fleeting::gesture>>(),
    method<"dropTarget:", &drop<&Fleeting::target>>(),
    method<"gestureRecognizer:shouldReceiveTouch:", &dropView>(),
};
const ClassDefinition Listener_class { .name = "Listener", .methods = listenerMethods };

class LivesOfGestures : public Gestures {
protected:
    Fleeting held;

    LivesOfGestures()
    {
        registerClass(Listener_class);
        fleeting = &held;
        held.target = send<"new">(classObject<"Listener">());
        held.view = makeView(CGRectMake(0, 0, 300, 200));
        send<"addSubview:", void>(window, held.view);
        send<"addSubview:", void>(held.view, view);
    }

    void recognize(const char* cls, const char* action)
    {
        held.gesture = send<"initWithTarget:action:">(
            send<"alloc">(id(objc_getClass(cls))), held.target, sel_registerName(action));
        send<"addGestureRecognizer:", void>(held.view, held.gesture);
    }

    static void pressAndWait()
    {
        touchScreenAt({ 60, 60 }, TouchKind::Began);
        advanceClock(100ms);
    }

    std::string moveAndLift() const
    {
        advanceClock(1s);
        touchScreenAt({ 90, 60 }, TouchKind::Moved);
        touchScreenAt({ 95, 60 }, TouchKind::Ended);
        advanceClock(1s);
        return held.log;
    }
};

constexpr const char* kinds[] { "UITapGestureRecognizer", "UILongPressGestureRecognizer", "UIPanGestureRecognizer" };

TEST_F(LivesOfGestures, ATargetThatGoesWhileAFingerIsDownHearsNothing)
{
    for (const char* const kind : kinds) {
        held.target = send<"new">(classObject<"Listener">());
        recognize(kind, "dropTarget:");
        const Weak<NSObject> target(held.target);
        pressAndWait();
        held.target = nil;
        EXPECT_FALSE(target.get()) << kind << ": a gesture doesn't keep its target";
        EXPECT_EQ(moveAndLift(), "") << kind;
    }
}

TEST_F(LivesOfGestures, ATargetMayGoWhileItIsTold)
{
    for (const char* const kind : { "UILongPressGestureRecognizer", "UIPanGestureRecognizer" }) {
        held.log.clear();
        held.target = send<"new">(classObject<"Listener">());
        recognize(kind, "dropTarget:");
        pressAndWait();
        EXPECT_EQ(moveAndLift(), "told ") << kind;
        send<"removeGestureRecognizer:", void>(held.view, held.gesture);
    }
}

TEST_F(LivesOfGestures, AGestureWhoseViewHasGoneGoesNoFurther)
{
    for (const char* const kind : kinds) {
        held.log.clear();
        held.view = makeView(CGRectMake(0, 0, 300, 200));
        send<"addSubview:", void>(window, held.view);
        send<"addSubview:", void>(held.view, view);
        held.target = send<"new">(classObject<"Listener">());
        recognize(kind, "dropGesture:");
        pressAndWait();
        send<"removeFromSuperview", void>(held.view);
        held.view = nil;
        EXPECT_EQ(send<"view">(held.gesture), nil) << kind;
        EXPECT_EQ(moveAndLift(), "") << kind;
    }
}

TEST_F(LivesOfGestures, ADelegateIsNotKeptAndMayTakeTheViewsAwayThatAreAsked)
{
    recognize("UITapGestureRecognizer", "dropGesture:");
    const id other = send<"initWithTarget:action:">(
        send<"alloc">(classObject<"UITapGestureRecognizer">()), held.target, sel_registerName("dropGesture:"));
    send<"addGestureRecognizer:", void>(view, other);
    send<"setDelegate:", void>(other, held.target);
    EXPECT_EQ(send<"delegate">(other), held.target);
    touchScreenAt({ 60, 60 }, TouchKind::Began);
    touchScreenAt({ 60, 60 }, TouchKind::Ended);
    EXPECT_EQ(held.log, "asked told ") << "the inner one is told, the outer one's view is gone";
    held.target = nil;
    EXPECT_EQ(send<"delegate">(other), nil);
}

TEST_F(LivesOfGestures, OneThatIsRemovedUnderWayIsCancelled)
{
    const id pan = add("UIPanGestureRecognizer", "pan:");
    fieldsOf<WitnessFields>(view).log.clear();
    touchScreenAt({ 60, 60 }, TouchKind::Began);
    touchScreenAt({ 90, 60 }, TouchKind::Moved);
    send<"removeGestureRecognizer:", void>(view, pan);
    touchScreenAt({ 95, 60 }, TouchKind::Moved);
    touchScreenAt({ 95, 60 }, TouchKind::Ended);
    EXPECT_EQ(fieldsOf<WitnessFields>(view).log, "began pan1 cancelled pan4 ");
}

} // namespace
