#include "panel/window/panel_window.h"

#include "entry/library_classes.h"
#include "panel/window/presentation_configuration.h"
#include "panel/window/sheet_frames.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/classes.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/weak.h"
#include "support/journalled_controller.h"
#include "support/view_test.h"

#include <cmath>

using namespace appledger;
using namespace platform;
using namespace std::chrono_literals;

namespace {

bool isNear(const CGRect& one, const CGRect& other)
{
    constexpr double little = 0.005;
    return std::abs(one.origin.x - other.origin.x) < little && std::abs(one.origin.y - other.origin.y) < little
        && std::abs(one.size.width - other.size.width) < little
        && std::abs(one.size.height - other.size.height) < little;
}

std::string text(const CGRect& frame)
{
    std::ostringstream out;
    out << frame.origin.x << ' ' << frame.origin.y << ' ' << frame.size.width << ' ' << frame.size.height;
    return out.str();
}

TEST(SheetFrames, StandAtTheirEdgeAndHideBeyondIt)
{
    constexpr CGSize container { 400, 800 };
    const struct {
        NSInteger direction;
        double percentage;
        const char* shown;
        const char* hidden;
    } cases[] = {
        { 0, 75, "0 200 400 600", "0 800 400 600" },
        { 0, 100, "0 0 400 800", "0 800 400 800" },
        { 1, 75, "0 0 400 600", "0 -600 400 600" },
        { 2, 75, "0 0 300 800", "-300 0 300 800" },
        { 3, 75, "100 0 300 800", "400 0 300 800" },
        { 4, 75, "0 0 0 0", "0 0 0 0" },
        { -1, 75, "0 0 0 0", "0 0 0 0" },
    };
    for (const auto& [direction, percentage, shown, hidden] : cases) {
        const CGSize size = sheetSize(direction, percentage, container);
        const CGRect frame = shownSheetFrame(direction, percentage, size, container);
        EXPECT_EQ(text(frame), shown) << direction;
        EXPECT_EQ(text(hiddenSheetFrame(direction, frame, container)), hidden) << direction;
    }
}

/// A controller that the panel's window shows, with the panel's manager.
class PanelWindow : public support::ViewTest {
protected:
    static constexpr CGRect screen { {}, { 390, 844 } };
    static constexpr CGRect sheet { { 0, 281.39 }, { 390, 562.61 } };

    PanelWindow()
    {
        setScreen(screen.size, 2);
        for (const ClassDefinition* definition : foundationClasses())
            registerClass(*definition);
        registerLibraryClasses();
        registerClass(support::JournalledController_class);
        below = UIWindow(makeWindow());
        configuration = make<ALDataPresentationConfiguration>();
    }
    ~PanelWindow() override
    {
        takeDownPanelWindow();
        support::settled();
    }

    UIViewController makeController(const char* title = "panel")
    {
        UIViewController controller(send<"new">(support::classObject<"JournalledController">()));
        controller.setTitle(string(title));
        manager = send<"initWithConfiguration:">(
            send<"alloc">(support::classObject<"ALDataPresentationManager">()), id(configuration));
        controller.setTransitioningDelegate(manager);
        controller.setModalPresentationStyle(UIModalPresentationStyle::Custom);
        return controller;
    }
    static void pass(std::chrono::milliseconds time)
    {
        advanceClock(time);
        runUntilIdle();
    }
    static id presentationOf(const UIViewController& controller) { return controller.presentationController(); }
    static UIView dimmingOf(const UIViewController& controller)
    {
        return UIView(send<"dimmingView">(presentationOf(controller)));
    }

    UIWindow below {};
    Ref<ALDataPresentationConfiguration> configuration {};
    id manager {};
};

TEST_F(PanelWindow, BringsTheSheetInFromBelowAndDimsWhatIsBehind)
{
    const UIViewController panel = makeController();
    presentInDedicatedWindow(panel);
    runUntilIdle();
    const UIWindow window(panelWindow());
    EXPECT_TRUE(isKindOfClass(window, objc_getClass("ALPanelWindow")));
    EXPECT_EQ(window.windowLevel(), UIWindowLevelStatusBar + 100);
    EXPECT_TRUE(window.isKeyWindow());
    EXPECT_TRUE((send<"canBecomeKeyWindow", bool>(window)));
    EXPECT_EQ(window.rootViewController().presentedViewController(), panel);
    pass(0ms);
    const UIView dimming = dimmingOf(panel);
    EXPECT_TRUE(isNear(panel.view().frame(), sheet)) << text(panel.view().frame());
    EXPECT_EQ(dimming.superview().subviews().front(), dimming) << "behind the sheet";
    pass(250ms);
    EXPECT_TRUE(isNear(panel.view().frame(), sheet)) << text(panel.view().frame());
    EXPECT_EQ(dimming.alpha(), 1);
    EXPECT_EQ(text(dimming.frame()), text(screen));
    EXPECT_NE(support::settled().find("panel viewDidAppear animated presented"), std::string::npos);
}

TEST_F(PanelWindow, TakesItOutAgainAndLetsGo)
{
    Weak<NSObject> heldController;
    Weak<NSObject> heldWindow;
    {
        const UIViewController panel = makeController();
        presentInDedicatedWindow(panel);
        support::settled();
        heldController = panel.object();
        heldWindow = panelWindow();
        touchScreenAt({ 195, 100 }, TouchKind::Began);
        touchScreenAt({ 195, 100 }, TouchKind::Ended);
        runUntilIdle();
        EXPECT_TRUE(panel.isBeingDismissed()) << "a tap beside the sheet";
        pass(249ms);
        EXPECT_TRUE(panel.presentingViewController());
        pass(1ms);
        EXPECT_FALSE(panel.presentingViewController());
        takeDownPanelWindow();
        EXPECT_FALSE(panelWindow());
        manager = nil;
    }
    support::settled();
    EXPECT_FALSE(heldController.get());
    EXPECT_FALSE(heldWindow.get());
    below.makeKeyWindow();
    takeDownPanelWindow();
    EXPECT_TRUE(below.isKeyWindow()) << "there is nothing to take down";
}

TEST_F(PanelWindow, ASwipeBesideTheSheetDismissesIt)
{
    for (const CGFloat step : { -30.0, 30.0 }) {
        const UIViewController panel = makeController();
        presentInDedicatedWindow(panel);
        support::settled();
        touchScreenAt({ 195, 140 }, TouchKind::Began);
        for (int count = 1; count <= 4; ++count) {
            pass(10ms);
            touchScreenAt({ 195, 140 + count * step }, TouchKind::Moved);
        }
        touchScreenAt({ 195, 140 + 4 * step }, TouchKind::Ended);
        runUntilIdle();
        EXPECT_TRUE(panel.isBeingDismissed()) << step;
        support::settled();
    }
}

TEST_F(PanelWindow, TheNextPanelReplacesAStaleOne)
{
    const UIViewController first = makeController("first");
    presentInDedicatedWindow(first);
    support::settled();
    const UIWindow stale(panelWindow());
    const UIViewController second = makeController("second");
    presentInDedicatedWindow(second);
    EXPECT_TRUE(stale.isHidden());
    EXPECT_FALSE(stale.rootViewController());
    EXPECT_NE(UIWindow(panelWindow()), stale);
    support::settled();
    EXPECT_TRUE(second.presentingViewController());
}

TEST_F(PanelWindow, StandsInTheSceneOfTheKeyWindowOfTheScreen)
{
    const id scene = send<"windowScene">(below);
    for (const bool hasKeyWindow : { true, false }) {
        UIWindow shown = below;
        if (!hasKeyWindow) {
            // A key window that belongs to no scene is none on the screen.
            shown = UIWindow(makeWindow());
            send<"setWindowScene:", void>(shown, nil);
        }
        shown.makeKeyWindow();
        const UIViewController panel = makeController();
        presentInDedicatedWindow(panel);
        const UIWindow window(panelWindow());
        EXPECT_EQ(window.windowLevel(), UIWindowLevelStatusBar + 100);
        EXPECT_EQ(text(window.frame()), text(screen));
        EXPECT_TRUE(window.rootViewController());
        if (hasKeyWindow) {
            EXPECT_EQ(send<"windowScene">(window), scene);
        }
        support::settled();
        takeDownPanelWindow();
    }
}

TEST_F(PanelWindow, StandsWhereItsHandlerSaysAndComesFromItsEdgeAllTheSame)
{
    configuration->direction = 3;
    configuration->screenPercentage = 10;
    configuration->fadeAnimation = true;
    configuration->fadeAnimationAlpha = 0.25;
    configuration->customFrameHandler = block([](const id& container) {
        const CGRect frame = UIView(container).frame();
        return CGRectMake(frame.size.width / 4, frame.size.height / 4, frame.size.width / 2, frame.size.height / 2);
    });
    const UIViewController panel = makeController();
    presentInDedicatedWindow(panel);
    runUntilIdle();
    support::settled();
    EXPECT_EQ(text(panel.view().frame()), "97.5 211 195 422");
    EXPECT_EQ(panel.view().alpha(), 1);
    const auto size = send<"sizeForChildContentContainer:withParentContainerSize:", CGSize>(
        presentationOf(panel), panel, screen.size);
    EXPECT_EQ(text({ {}, size }), "0 0 195 422");
    const UIView view = panel.view();
    panel.dismiss(true);
    pass(0ms);
    EXPECT_EQ(text(view.frame()), "390 211 195 422");
    EXPECT_EQ(view.alpha(), 0.25);
}

TEST_F(PanelWindow, GrowsFromARectangleAndReturnsToIt)
{
    configuration->sourceRect = CGRectMake(20, 40, 60, 60);
    const UIViewController panel = makeController();
    presentInDedicatedWindow(panel);
    support::settled();
    EXPECT_TRUE(isNear(panel.view().frame(), sheet));
    const UIView view = panel.view();
    panel.dismiss(true);
    pass(0ms);
    EXPECT_EQ(text(view.frame()), "20 40 60 60");
    EXPECT_EQ(view.alpha(), 1) << "nothing fades that isn't told to";
}

TEST_F(PanelWindow, AnInterruptedDismissalLeavesItUp)
{
    const UIViewController panel = makeController();
    presentInDedicatedWindow(panel);
    support::settled();
    panel.dismiss(true);
    pass(100ms);
    panel.view().setFrame(sheet);
    support::settled();
    EXPECT_TRUE(panel.presentingViewController());
    EXPECT_FALSE(panel.isBeingDismissed());
    panel.dismiss(true);
    support::settled();
    EXPECT_FALSE(panel.presentingViewController());
}

TEST_F(PanelWindow, WithoutAnAnimationItStandsAtOnce)
{
    below.setRootViewController(UIViewController::create());
    const UIViewController panel = makeController();
    below.rootViewController().present(panel, false);
    EXPECT_EQ(dimmingOf(panel).alpha(), 1);
    support::settled();
    EXPECT_TRUE(isNear(panel.view().frame(), sheet));
    const UIView dimming = dimmingOf(panel);
    panel.dismiss(false);
    EXPECT_EQ(dimming.alpha(), 0);
}

void dismissByItself(const id& self, SEL)
{
    support::note("dismiss");
    send<"dismissViewControllerAnimated:completion:", void>(self, false, nil);
}

TEST_F(PanelWindow, AsksThePanelItselfToDismiss)
{
    constexpr MethodDefinition rows[] { method<"dismiss", &dismissByItself>() };
    const ClassDefinition definition {
        .name = "SelfDismissing", .superclassName = "JournalledController", .methods = rows
    };
    UIViewController panel = makeController();
    const id own = send<"new">(id(registerClass(definition)));
    send<"setTransitioningDelegate:", void>(own, manager);
    send<"setModalPresentationStyle:", void>(own, NSInteger { 4 });
    presentInDedicatedWindow(own);
    support::settled();
    send<"dismiss", void>(presentationOf(UIViewController(own)));
    EXPECT_TRUE(support::settled().starts_with("dismiss"));
    EXPECT_FALSE(UIViewController(own).presentingViewController());
}

TEST_F(PanelWindow, KeepsKeyboardsAboveItself)
{
    const auto windowOfClass = [](const ClassDefinition& definition) {
        const UIWindow window(send<"new">(id(registerClass(definition))));
        window.setHidden(false);
        return window;
    };
    static const ClassDefinition keyboard { .name = "SBKeyboardWindow", .superclassName = "UIWindow" };
    static const ClassDefinition effects { .name = "SBEffectsWindow", .superclassName = "UIWindow" };
    static const ClassDefinition input { .name = "SBInputWindow", .superclassName = "UIWindow" };
    const UIWindow raised[] { windowOfClass(keyboard), windowOfClass(effects), windowOfClass(input) };
    const UIViewController panel = makeController();
    presentInDedicatedWindow(panel);
    support::settled();
    postLocalNotification("UIKeyboardWillShowNotification");
    for (const UIWindow& window : raised)
        EXPECT_EQ(window.windowLevel(), 0) << "not before whoever shows it is done";
    runUntilIdle();
    for (const UIWindow& window : raised)
        EXPECT_EQ(window.windowLevel(), UIWindowLevelStatusBar + 110);
    EXPECT_EQ(below.windowLevel(), 0);
    takeDownPanelWindow();
    support::settled();
    raised[0].setWindowLevel(5);
    postLocalNotification("UIKeyboardWillShowNotification");
    runUntilIdle();
    EXPECT_EQ(raised[0].windowLevel(), 5) << "a window that has gone hears nothing";
}

} // namespace
