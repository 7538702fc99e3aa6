#include "platform/dispatch/clock.h"
#include "platform/foundation/values.h"
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

} // namespace
