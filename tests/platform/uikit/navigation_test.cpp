#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/handles/UINavigationController.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/exception.h"
#include "support/journalled_controller.h"
#include "support/view_test.h"

#include <sstream>

/// Controllers one upon the other, their order, and the bar over them.

namespace {

using namespace platform;
using namespace support;
using namespace std::chrono_literals;

void pressed(const id&, SEL, const id&)
{
    note("pressed");
}
constexpr MethodDefinition pressedMethods[] { method<"pressed:", &pressed>() };
const ClassDefinition Pressed_class { .name = "Pressed", .methods = pressedMethods };

class Navigation : public ViewTest {
protected:
    Navigation()
    {
        setScreen({ 390, 844 }, 2);
        window.setFrame(CGRectMake(0, 0, 390, 844));
        navigation = UINavigationController::withRootViewController(UIViewController(root));
        window.setRootViewController(navigation);
        window.setHidden(false);
        settled();
    }

    static id controller(const char* name)
    {
        const id made = send<"new">(id(registerClass(JournalledController_class)));
        send<"setTitle:", void>(made, string(name));
        return made;
    }

    static void tap(CGPoint point)
    {
        touchScreenAt(point, TouchKind::Began);
        touchScreenAt(point, TouchKind::Ended);
    }

    static void drag(double from, double to)
    {
        touchScreenAt({ from, 500 }, TouchKind::Began);
        for (int step = 1; step <= 10; ++step) {
            advanceClock(50ms);
            touchScreenAt({ from + (to - from) * step / 10, 500 }, TouchKind::Moved);
        }
        advanceClock(200ms);
        touchScreenAt({ to, 500 }, TouchKind::Ended);
    }

    const id root = controller("R");
    UINavigationController navigation;
    const UIWindow window = UIWindow::create();
};

TEST_F(Navigation, PushesAndPopsTellBothInTheirOrder)
{
    const id next = controller("A");
    navigation.push(UIViewController(next), true);
    EXPECT_EQ(settled(),
        "A willMove nil, A loadView, A viewDidLoad, R viewWillDisappear animated, A viewWillAppear animated moving, R "
        "viewDidDisappear animated, A viewDidAppear animated moving, A didMove nil");
    EXPECT_EQ(navigation.topViewController().object(), next);
    EXPECT_EQ(send<"navigationController">(next), navigation);
    EXPECT_EQ(send<"superview">(send<"view">(root)), nil);
    EXPECT_EQ(navigation.pop(true).object(), next);
    EXPECT_EQ(settled(),
        "A willMove nil, A viewWillDisappear animated leaving, R viewWillAppear animated, A viewDidDisappear animated "
        "leaving, R viewDidAppear animated, A didMove nil");
    EXPECT_EQ(navigation.pop(true).object(), nil) << "the root stays";
    EXPECT_EQ(send<"navigationController">(next), nil);
}

TEST_F(Navigation, ToTheRootTakesAllThatStandOnIt)
{
    for (const char* const name : { "A", "B", "C" })
        navigation.push(UIViewController(controller(name)), false);
    settled();
    EXPECT_EQ(itemsOf(navigation.popToRoot(true)).size(), 3U);
    EXPECT_EQ(settled(),
        "A willMove nil, B willMove nil, C willMove nil, C viewWillDisappear animated leaving, R viewWillAppear "
        "animated, C viewDidDisappear animated leaving, R viewDidAppear animated, A didMove nil, B didMove nil, C "
        "didMove nil");
    EXPECT_THROW(navigation.push(UIViewController(root), true), NSException);
    EXPECT_THROW(navigation.push(UIViewController(), true), NSException);
    EXPECT_THROW((send<"popToViewController:animated:">(navigation, controller("X"), true)), NSException);
}

TEST_F(Navigation, TheNextPushEndsTheOneUnderWay)
{
    const id next = controller("A");
    const id last = controller("B");
    navigation.push(UIViewController(next), true);
    navigation.push(UIViewController(last), true);
    settled();
    EXPECT_EQ(navigation.topViewController().object(), last);
    EXPECT_EQ(send<"superview">(send<"view">(next)), nil);
    EXPECT_EQ((send<"convertRect:toView:", CGRect>(send<"view">(last), CGRectMake(0, 0, 390, 844), nil)),
        CGRectMake(0, 0, 390, 844));
}

TEST_F(Navigation, TheBarTakesItsRoomFromTheSafeArea)
{
    EXPECT_EQ(navigation.navigationBar().frame(), CGRectMake(0, 0, 390, 91));
    EXPECT_EQ((send<"safeAreaInsets", UIEdgeInsets>(send<"view">(root))), UIEdgeInsetsMake(91, 0, 34, 0));
    navigation.setNavigationBarHidden(true, false);
    runUntilIdle();
    EXPECT_EQ((send<"safeAreaInsets", UIEdgeInsets>(send<"view">(root))), UIEdgeInsetsMake(47, 0, 34, 0));
    EXPECT_TRUE(navigation.navigationBar().isHidden());
}

TEST_F(Navigation, TheBarLeadsBackAndItsButtonsAct)
{
    const id target = send<"new">(id(registerClass(Pressed_class)));
    const id next = controller("Next");
    UIViewController(next).navigationItem().setRightBarButtonItem(
        UIBarButtonItem::withTitle(string("Press"), UIBarButtonItemStyle::Done, target, sel_registerName("pressed:")));
    navigation.push(UIViewController(next), true);
    settled();
    const std::string shown = descriptionOfScreen();
    for (const char* const text : { "\"Next\"", "\"R\"", "\"Press\"" })
        EXPECT_NE(shown.find(text), std::string::npos) << shown;
    tap({ 360, 69 });
    EXPECT_EQ(settled(), "pressed");
    UIViewController(next).setTitle(string("Other"));
    EXPECT_NE(descriptionOfScreen().find("\"Other\""), std::string::npos);
    tap({ 15, 69 });
    settled();
    EXPECT_EQ(navigation.topViewController().object(), root);
    EXPECT_EQ(descriptionOfScreen().find("\"Press\""), std::string::npos);
}

TEST_F(Navigation, AFingerFromTheEdgeDrawsThePageAside)
{
    const id next = controller("A");
    navigation.push(UIViewController(next), false);
    settled();
    drag(100, 350);
    EXPECT_EQ(settled(), "") << "not from the middle";
    drag(5, 100);
    EXPECT_EQ(settled(),
        "A viewWillDisappear animated, R viewWillAppear animated, A viewWillAppear animated, R viewWillDisappear "
        "animated, R viewDidDisappear animated, A viewDidAppear animated")
        << "and it comes back";
    EXPECT_EQ(navigation.topViewController().object(), next);
    drag(5, 350);
    const std::string told = settled();
    EXPECT_TRUE(told.ends_with("A didMove nil")) << told;
    EXPECT_EQ(navigation.topViewController().object(), root);
    EXPECT_EQ((send<"convertRect:toView:", CGRect>(send<"view">(root), CGRectMake(0, 0, 390, 844), nil)),
        CGRectMake(0, 0, 390, 844));
}

} // namespace
