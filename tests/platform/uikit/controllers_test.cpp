#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "support/journalled_controller.h"
#include "support/view_test.h"

/// What a controller hears, in its order, in the words of the messages.

namespace {

using namespace platform;
using support::classObject;
using support::takeJournal;
using namespace std::chrono_literals;

class Controllers : public support::ViewTest {
protected:
    Controllers() { registerClass(support::JournalledController_class); }

    static id controller(const char* name)
    {
        const id made = send<"new">(classObject<"JournalledController">());
        send<"setTitle:", void>(made, string(name));
        return made;
    }

    static id windowOf(const id& root)
    {
        const id window = send<"new">(classObject<"UIWindow">());
        send<"setRootViewController:", void>(window, root);
        send<"setHidden:", void>(window, false);
        return window;
    }

    static id viewOf(const id& controller) { return send<"view">(controller); }
};

TEST_F(Controllers, ARootAppearsWithItsWindowAndHasAppearedOnceItIsLaidOut)
{
    const id root = controller("R");
    EXPECT_FALSE((send<"isViewLoaded", bool>(root)));
    EXPECT_EQ(send<"viewIfLoaded">(root), nil);
    const id window = windowOf(root);
    EXPECT_EQ(takeJournal(), "R loadView, R viewDidLoad, R viewWillAppear");
    runUntilIdle();
    EXPECT_EQ(takeJournal(), "R safeArea, R willLayout, R didLayout, R viewDidAppear");
    EXPECT_EQ(send<"window">(viewOf(root)), window);
    send<"setHidden:", void>(window, true);
    EXPECT_EQ(takeJournal(), "R viewWillDisappear, R viewDidDisappear");
    send<"setHidden:", void>(window, true);
    send<"setRootViewController:", void>(window, nil);
    EXPECT_EQ(takeJournal(), "");
    EXPECT_EQ(send<"window">(viewOf(root)), nil);
}

TEST_F(Controllers, AViewIsMadeOnce)
{
    const id made = controller("A");
    send<"loadViewIfNeeded", void>(made);
    send<"loadViewIfNeeded", void>(made);
    const id view = viewOf(made);
    EXPECT_EQ(takeJournal(), "A loadView, A viewDidLoad");
    EXPECT_EQ(send<"nextResponder">(view), made);
    const id other = makeView({});
    send<"setView:", void>(made, other);
    EXPECT_EQ(send<"nextResponder">(view), nil) << "it is nobody's now";
    EXPECT_EQ(viewOf(made), other);
    EXPECT_EQ(takeJournal(), "");
}

TEST_F(Controllers, AChildHearsWhatItsParentHears)
{
    const id parent = controller("P");
    const id child = controller("C");
    send<"addChildViewController:", void>(parent, child);
    EXPECT_EQ(takeJournal(), "C willMove P");
    EXPECT_EQ(send<"parentViewController">(child), parent);
    send<"addSubview:", void>(viewOf(parent), viewOf(child));
    send<"didMoveToParentViewController:", void>(child, parent);
    takeJournal();
    const id window = windowOf(parent);
    EXPECT_EQ(takeJournal(), "P viewWillAppear, C viewWillAppear moving");
    runUntilIdle();
    EXPECT_EQ(takeJournal(),
        "P safeArea, P willLayout, P didLayout, C safeArea, C willLayout, C didLayout, C viewDidAppear moving, P "
        "viewDidAppear");
    send<"willMoveToParentViewController:", void>(child, nil);
    send<"removeFromSuperview", void>(viewOf(child));
    send<"removeFromParentViewController", void>(child);
    EXPECT_EQ(takeJournal(), "C willMove nil, C viewWillDisappear leaving, C viewDidDisappear leaving, C didMove nil");
    EXPECT_EQ(send<"parentViewController">(child), nil);
}

TEST_F(Controllers, AChildThatComesLaterAppearsByItself)
{
    const id parent = controller("P");
    const id window = windowOf(parent);
    runUntilIdle();
    takeJournal();
    const id child = controller("C");
    send<"addChildViewController:", void>(parent, child);
    send<"addSubview:", void>(viewOf(parent), viewOf(child));
    send<"didMoveToParentViewController:", void>(child, parent);
    EXPECT_EQ(takeJournal(), "C willMove P, C loadView, C viewDidLoad, C viewWillAppear moving, C didMove P");
    runUntilIdle();
    const std::string after = takeJournal();
    EXPECT_TRUE(after.ends_with("C viewDidAppear moving")) << after;
    // Both at once, in one pass of the main queue: it never appeared.
    const id brief = controller("B");
    send<"addSubview:", void>(viewOf(parent), viewOf(brief));
    send<"removeFromSuperview", void>(viewOf(brief));
    runUntilIdle();
    EXPECT_NE(takeJournal().find("B viewWillAppear, B viewWillDisappear, B viewDidDisappear"), std::string::npos);
}

TEST_F(Controllers, WhoForwardsByHandDecidesWhatItsChildrenHear)
{
    const id parent = controller("P");
    const id child = controller("C");
    send<"addChildViewController:", void>(parent, child);
    send<"addSubview:", void>(viewOf(parent), viewOf(child));
    takeJournal();
    for (const bool animated : { false, true }) {
        send<"beginAppearanceTransition:animated:", void>(child, true, animated);
        send<"beginAppearanceTransition:animated:", void>(child, true, animated);
        send<"endAppearanceTransition", void>(child);
        send<"endAppearanceTransition", void>(child);
        EXPECT_EQ(takeJournal(),
            animated ? "C viewWillAppear animated, C viewDidAppear animated"
                     : "C viewWillAppear moving, C viewDidAppear moving");
        send<"beginAppearanceTransition:animated:", void>(child, false, animated);
        send<"endAppearanceTransition", void>(child);
        takeJournal();
    }
}

TEST_F(Controllers, ContainmentIsATree)
{
    const id parent = controller("P");
    const id child = controller("C");
    send<"addChildViewController:", void>(parent, child);
    EXPECT_THROW((send<"addChildViewController:", void>(child, parent)), NSException);
    EXPECT_THROW((send<"addChildViewController:", void>(parent, parent)), NSException);
    EXPECT_THROW((send<"addChildViewController:", void>(parent, nil)), NSException);
    takeJournal();
    const id other = controller("O");
    send<"addChildViewController:", void>(other, child);
    EXPECT_EQ(takeJournal(), "C didMove nil, C willMove O");
    EXPECT_EQ(itemsOf(send<"childViewControllers">(parent)).size(), 0U);
    EXPECT_EQ(itemsOf(send<"childViewControllers">(other)).size(), 1U);
    send<"removeFromParentViewController", void>(child);
    send<"removeFromParentViewController", void>(child);
    EXPECT_EQ(takeJournal(), "C didMove nil");
}

TEST_F(Controllers, InsetsOfOnesOwnAddToTheSafeArea)
{
    setScreen({ 300, 600 }, 2);
    const id root = controller("R");
    const id window = windowOf(root);
    const id inside = makeView(CGRectMake(0, 100, 300, 100));
    const id child = controller("C");
    send<"addSubview:", void>(viewOf(root), inside);
    send<"addSubview:", void>(inside, viewOf(child));
    send<"setFrame:", void>(viewOf(child), CGRectMake(0, 0, 300, 100));
    const UIEdgeInsets whole = send<"safeAreaInsets", UIEdgeInsets>(viewOf(root));
    EXPECT_GT(whole.top, 0);
    runUntilIdle();
    takeJournal();
    send<"setAdditionalSafeAreaInsets:", void>(root, UIEdgeInsetsMake(60, 5, 0, 0));
    EXPECT_EQ(
        (send<"safeAreaInsets", UIEdgeInsets>(viewOf(root))), UIEdgeInsetsMake(whole.top + 60, 5, whole.bottom, 0));
    EXPECT_EQ((send<"safeAreaInsets", UIEdgeInsets>(inside)), UIEdgeInsetsMake(whole.top - 40, 5, 0, 0));
    send<"setAdditionalSafeAreaInsets:", void>(child, UIEdgeInsetsMake(1, 1, 1, 1));
    EXPECT_EQ((send<"safeAreaInsets", UIEdgeInsets>(viewOf(child))), UIEdgeInsetsMake(whole.top - 39, 6, 1, 1));
    advanceClock(1s);
    EXPECT_NE(takeJournal().find("R safeArea"), std::string::npos);
}

} // namespace
