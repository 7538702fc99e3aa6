#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
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

constexpr MethodDefinition witnessMethods[] {
    method<"hold:", &note<"hold">>(),
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
