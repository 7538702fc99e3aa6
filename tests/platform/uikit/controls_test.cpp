#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIButton.h"
#include "platform/handles/UISwitch.h"
#include "platform/handles/UITapGestureRecognizer.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/class_definition.h"
#include "support/view_test.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;

/// Writes down what it is told, with a star where the sender was highlighted.
struct Witness : NSObject {
    static const ClassDefinition definition;
    std::string log {};
    id lastEvent {};
    std::function<void()> duringAction {};

    std::string told() { return std::exchange(log, {}); }
};

void note(const id& self, SEL cmd, const id& sender)
{
    auto& witness = static_cast<Witness&>(*self);
    std::string name(sel_getName(cmd));
    name.pop_back();
    witness.log += name + (send<"isHighlighted", bool>(sender) ? "* " : " ");
    if (witness.duringAction)
        witness.duringAction();
}
void plain(const id& self, SEL)
{
    static_cast<Witness&>(*self).log += "plain ";
}
void withEvent(const id& self, SEL, const id&, const id& event)
{
    static_cast<Witness&>(*self).log += "withEvent ";
    static_cast<Witness&>(*self).lastEvent = event;
}

constexpr MethodDefinition witnessMethods[] {
    method<"cancel:", &note>(),
    method<"changed:", &note>(),
    method<"down:", &note>(),
    method<"dragEnter:", &note>(),
    method<"dragExit:", &note>(),
    method<"dragInside:", &note>(),
    method<"dragOutside:", &note>(),
    method<"plain", &plain>(),
    method<"repeat:", &note>(),
    method<"tapped:", &note>(),
    method<"upInside:", &note>(),
    method<"upOutside:", &note>(),
    method<"withSender:event:", &withEvent>(),
};
const ClassDefinition Witness::definition {
    .name = "ControlWitness", .allocate = allocate<Witness>, .methods = witnessMethods
};

class Controls : public support::ViewTest {
protected:
    UIWindow window { makeWindow() };
    Ref<Witness> witness = make<Witness>();

    /// Touches these points, 20 thousandths of a second apart, and lets go at the last.
    static void touch(const std::vector<CGPoint>& points, TouchKind end = TouchKind::Ended)
    {
        advanceClock(1s);
        touchScreenAt(points.front(), TouchKind::Began);
        for (std::size_t index = 1; index < points.size(); ++index) {
            advanceClock(20ms);
            touchScreenAt(points[index], TouchKind::Moved);
        }
        advanceClock(20ms);
        touchScreenAt(points.back(), end);
    }
};

class EventsOfTouches : public Controls {
protected:
    UIControl control = UIControl::withFrame(CGRectMake(100, 50, 60, 40));

    EventsOfTouches()
    {
        window.addSubview(control);
        using enum UIControlEvents;
        constexpr std::pair<UIControlEvents, const char*> actions[] { { TouchDown, "down:" },
            { TouchDownRepeat, "repeat:" }, { TouchDragInside, "dragInside:" }, { TouchDragOutside, "dragOutside:" },
            { TouchDragEnter, "dragEnter:" }, { TouchDragExit, "dragExit:" }, { TouchUpInside, "upInside:" },
            { TouchUpOutside, "upOutside:" }, { TouchCancel, "cancel:" } };
        for (const auto& [event, action] : actions)
            control.addTarget(witness, sel_registerName(action), event);
    }
};

TEST_F(EventsOfTouches, FollowTheFingerAndAllowItToStraySeventyPoints)
{
    const CGPoint inside { 110, 60 };
    const CGPoint strayed { 229.5, 60 }; // the control ends at 160
    const CGPoint outside { 230, 60 };
    const struct {
        std::vector<CGPoint> way;
        TouchKind end;
        const char* events;
    } cases[] {
        { { inside }, TouchKind::Ended, "down* upInside " },
        { { inside, strayed }, TouchKind::Ended, "down* dragInside* upInside " },
        { { inside, outside }, TouchKind::Ended, "down* dragOutside dragExit upOutside " },
        { { inside, { 31, 60 }, { 29, 60 } }, TouchKind::Ended, "down* dragInside* dragOutside dragExit upOutside " },
        { { inside, outside, inside }, TouchKind::Ended,
            "down* dragOutside dragExit dragInside* dragEnter* upInside " },
        { { inside, { 120, 60 } }, TouchKind::Cancelled, "down* dragInside* cancel " },
        { { outside, inside }, TouchKind::Ended, "" },
    };
    for (const auto& [way, end, events] : cases) {
        touch(way, end);
        EXPECT_EQ(witness->told(), events);
        EXPECT_FALSE(control.isHighlighted() || control.isTracking() || control.isTouchInside());
    }
}

TEST_F(EventsOfTouches, ASecondTapIsARepeat)
{
    touch({ { 110, 60 } });
    touchScreenAt({ 110, 60 }, TouchKind::Began);
    EXPECT_EQ(witness->told(), "down* upInside down* repeat* ");
    EXPECT_TRUE(control.isTracking() && control.isTouchInside());
}

TEST_F(EventsOfTouches, WhoIsDisabledHearsNothingAndLetsGoOfWhatItHas)
{
    control.setEnabled(false);
    EXPECT_EQ(control.state(), UIControlState::Disabled);
    touch({ { 110, 60 } });
    EXPECT_EQ(witness->told(), "");
    control.setEnabled(true);
    advanceClock(1s);
    touchScreenAt({ 110, 60 }, TouchKind::Began);
    control.setEnabled(false);
    touchScreenAt({ 110, 60 }, TouchKind::Ended);
    EXPECT_EQ(witness->told(), "down* cancel ");
}

TEST_F(EventsOfTouches, ATargetIsNeitherKeptNorToldOnceItIsRemoved)
{
    control.removeTarget(witness, sel_registerName("down:"), UIControlEvents::AllEvents);
    touch({ { 110, 60 } });
    EXPECT_EQ(witness->told(), "upInside ");
    EXPECT_EQ(
        itemsOf(send<"actionsForTarget:forControlEvent:">(control, id(witness), UIControlEvents::TouchUpInside)).size(),
        1U);
    EXPECT_EQ(itemsOf(send<"allTargets">(control)).size(), 1U);
    witness = nullptr;
    EXPECT_TRUE(itemsOf(send<"allTargets">(control)).empty());
    touch({ { 110, 60 } });
}

TEST_F(EventsOfTouches, AnActionMayTakeTheControlAway)
{
    witness->duringAction = [&] {
        control.removeFromSuperview();
        control = nullptr;
    };
    touch({ { 110, 60 } });
    EXPECT_EQ(witness->told(), "down* upInside ") << "and the touch still has it";
}

TEST_F(Controls, AnActionTakesNothingTheSenderOrTheEventToo)
{
    const UIControl control = UIControl::withFrame(CGRectMake(0, 0, 50, 50));
    window.addSubview(control);
    for (const char* action : { "plain", "tapped:", "withSender:event:" })
        control.addTarget(witness, sel_registerName(action), UIControlEvents::TouchUpInside);
    touch({ { 10, 10 } });
    EXPECT_EQ(witness->told(), "plain tapped withEvent ");
    EXPECT_TRUE(witness->lastEvent);
    control.sendActions(UIControlEvents::TouchUpInside);
    EXPECT_EQ(witness->told(), "plain tapped withEvent ");
    EXPECT_FALSE(witness->lastEvent) << "of no touch";
}

bool yes(const id&, SEL)
{
    return true;
}
void fromChain(const id& self, SEL, const id&)
{
    fieldsOf<std::string>(self) += "performed ";
}
constexpr MethodDefinition performerMethods[] {
    method<"canBecomeFirstResponder", &yes>(),
    method<"perform:", &fromChain>(),
};
const ClassDefinition Performer_class {
    .name = "PerformingView", .superclassName = "UIView", .methods = performerMethods
};

TEST_F(Controls, WithoutATargetTheFirstInTheResponderChainPerforms)
{
    const auto performer = [&] { return UIView(send<"new">(id(registerClass(Performer_class)))); };
    const UIView outer = performer();
    const UIView elsewhere = performer();
    const UIControl control = UIControl::withFrame(CGRectMake(0, 0, 50, 50));
    outer.setFrame(CGRectMake(0, 0, 100, 100));
    outer.addSubview(control);
    window.addSubview(outer);
    window.addSubview(elsewhere);
    const auto action = sel_registerName("perform:");
    control.addTarget(nil, action, UIControlEvents::TouchUpInside);
    touch({ { 10, 10 } });
    EXPECT_EQ(std::exchange(fieldsOf<std::string>(outer), {}), "performed ") << "from the sender on";
    EXPECT_TRUE(elsewhere.becomeFirstResponder() && elsewhere.isFirstResponder());
    touch({ { 10, 10 } });
    EXPECT_EQ(fieldsOf<std::string>(outer), "");
    EXPECT_EQ(std::exchange(fieldsOf<std::string>(elsewhere), {}), "performed ") << "from the first responder on";
    EXPECT_EQ(control.targetForAction(action, nil), outer);
    EXPECT_FALSE(control.canPerformAction(action, nil));
    EXPECT_FALSE(control.becomeFirstResponder()) << "who can't become it leaves it to who is";
    EXPECT_TRUE(elsewhere.isFirstResponder());
    EXPECT_TRUE(outer.becomeFirstResponder());
    EXPECT_FALSE(elsewhere.isFirstResponder());
    outer.removeFromSuperview();
    EXPECT_FALSE(outer.isFirstResponder()) << "it has left its window";
}

TEST_F(Controls, TheResponderChainGoesByTheControllerToTheApplication)
{
    const id controller = send<"new">(support::classObject<"UIViewController">());
    const UIView view(send<"view">(controller));
    const UIView inner = UIView::create();
    view.addSubview(inner);
    send<"setRootViewController:", void>(window, controller);
    std::vector<id> chain;
    for (UIResponder responder(inner.object()); responder; responder = responder.nextResponder())
        chain.push_back(responder);
    const id application = send<"sharedApplication">(support::classObject<"UIApplication">());
    const id scene = send<"windowScene">(window);
    EXPECT_EQ(chain, (std::vector<id> { inner, view, controller, window, scene, application }));
}

TEST_F(Controls, ATapOnAControlIsNotOneOnWhatItStandsIn)
{
    const UIView behind = UIView::withFrame(CGRectMake(0, 0, 100, 100));
    const UIControl control = UIControl::withFrame(CGRectMake(0, 0, 50, 50));
    behind.addSubview(control);
    window.addSubview(behind);
    control.addTarget(witness, sel_registerName("upInside:"), UIControlEvents::TouchUpInside);
    behind.addGestureRecognizer(UITapGestureRecognizer::withTarget(witness, sel_registerName("plain")));
    touch({ { 10, 10 } });
    EXPECT_EQ(witness->told(), "upInside ");
    touch({ { 70, 70 } });
    EXPECT_EQ(witness->told(), "plain ");
    control.setEnabled(false);
    touch({ { 10, 10 } });
    EXPECT_EQ(witness->told(), "plain ");
}

TEST_F(Controls, AButtonShowsWhatItsStateAsksFor)
{
    const UIButton button = UIButton::withType(UIButtonType::Custom);
    button.setTitle(string("Off"), UIControlState::Normal);
    button.setTitle(string("On"), UIControlState::Selected);
    button.setTitleColor(UIColor::black(), UIControlState::Normal);
    EXPECT_EQ(asString(button.titleLabel().text())->view(), "Off");
    button.setSelected(true);
    EXPECT_EQ(asString(button.currentTitle())->view(), "On");
    EXPECT_EQ(asString(button.titleLabel().text())->view(), "On");
    button.setHighlighted(true);
    EXPECT_EQ(asString(button.currentTitle())->view(), "Off") << "a state without a value takes the normal one's";
    EXPECT_FALSE(UIButton::withType(UIButtonType::System).currentTitle());
}

TEST_F(Controls, ASystemButtonDimsAtOnceAndBrightensSlowly)
{
    const UIButton button = UIButton::withType(UIButtonType::System);
    button.setTitle(string("Save"), UIControlState::Normal);
    button.setFrame({ { 20, 20 }, button.sizeThatFits({}) });
    window.addSubview(button);
    EXPECT_GE(button.frame().size.height, 30);
    runUntilIdle();
    const auto seen = [] {
        const std::string text = descriptionOfScreen();
        const auto at = text.find("alpha ");
        return at == std::string::npos ? 1.0 : std::stod(text.substr(at + 6));
    };
    EXPECT_EQ(seen(), 1);
    touchScreenAt({ 30, 30 }, TouchKind::Began);
    EXPECT_EQ(seen(), 0.2);
    touchScreenAt({ 30, 30 }, TouchKind::Ended);
    advanceClock(100ms);
    EXPECT_GT(seen(), 0.2);
    EXPECT_LT(seen(), 1);
    advanceClock(1s);
    EXPECT_EQ(seen(), 1);
}

TEST_F(Controls, ASwitchIsTappedOrPulledAndTellsOfBothOnce)
{
    const UISwitch control = UISwitch::create();
    control.setFrame(CGRectMake(100, 50, 5, 5));
    EXPECT_EQ(control.frame().size, CGSizeMake(51, 31)) << "it has its own size";
    window.addSubview(control);
    control.addTarget(witness, sel_registerName("changed:"), UIControlEvents::ValueChanged);
    const struct {
        std::vector<CGPoint> way;
        bool on;
        bool isTold;
    } cases[] {
        { { { 110, 60 } }, true, true },
        { { { 110, 60 } }, false, true },
        { { { 110, 60 }, { 140, 60 } }, true, true },
        { { { 140, 60 }, { 145, 60 }, { 149, 60 } }, true, false },
        { { { 110, 60 }, { 300, 60 }, { 60, 60 } }, false, true },
        { { { 110, 60 }, { 110, 190 } }, false, false },
    };
    for (const auto& [way, on, isTold] : cases) {
        touch(way);
        EXPECT_EQ(control.isOn(), on);
        EXPECT_EQ(!witness->told().empty(), isTold);
    }
    control.setOn(true, false);
    EXPECT_TRUE(control.isOn());
    EXPECT_EQ(witness->told(), "") << "the program knows what it has done";
}

} // namespace
