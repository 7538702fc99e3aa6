#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIAlertController.h"
#include "platform/handles/UIDevice.h"
#include "platform/handles/UINavigationController.h"
#include "platform/handles/UIWindow.h"
#include "support/view_test.h"

/// As handles_test.cpp, for controllers and what belongs to them: each method is called once.

namespace {

using namespace platform;

class ControllerHandles : public support::ViewTest {
protected:
    ControllerHandles()
    {
        window.setRootViewController(root);
        window.makeKeyAndVisible();
    }

    const UIWindow window = UIWindow::create();
    const UIViewController root = UIViewController::create();
};

TEST_F(ControllerHandles, AControllersMethodsAreTheClasss)
{
    const UIViewController child = UIViewController::create();
    child.loadViewIfNeeded();
    EXPECT_TRUE(child.isViewLoaded());
    const UIView view = UIView::create();
    child.setView(view);
    EXPECT_EQ(child.view(), view);
    child.setTitle(string("title"));
    EXPECT_EQ(describe(child.title()), "\"title\"");
    EXPECT_EQ(describe(send<"title">(child.navigationItem())), "\"title\"");
    EXPECT_EQ(child.traitCollection().userInterfaceStyle(), UIUserInterfaceStyle::Light);
    EXPECT_EQ(UITraitCollection::current().displayScale(), 2);
    EXPECT_EQ(UITraitCollection::current().horizontalSizeClass(), UIUserInterfaceSizeClass::Compact);
    EXPECT_EQ(UITraitCollection::current().verticalSizeClass(), UIUserInterfaceSizeClass::Compact);
    child.setOverrideUserInterfaceStyle(UIUserInterfaceStyle::Dark);
    EXPECT_EQ(child.traitCollection().userInterfaceStyle(), UIUserInterfaceStyle::Dark);
    child.setAdditionalSafeAreaInsets({ 1, 2, 3, 4 });
    child.setPreferredContentSize({ 10, 20 });
    child.setDefinesPresentationContext(true);
    child.setTransitioningDelegate(nil);
    child.setModalTransitionStyle(UIModalTransitionStyle::CrossDissolve);
    root.addChildViewController(child);
    child.didMoveToParentViewController(root);
    EXPECT_EQ(child.parentViewController(), root);
    child.willMoveToParentViewController(UIViewController());
    child.removeFromParentViewController();
    EXPECT_FALSE(child.parentViewController());
}

TEST_F(ControllerHandles, SoAreThoseOfPresentationsAndAlerts)
{
    const UIViewController shown = UIViewController::create();
    shown.setModalPresentationStyle(UIModalPresentationStyle::Popover);
    const UIPopoverPresentationController popover = shown.popoverPresentationController();
    ASSERT_TRUE(popover);
    popover.setSourceView(root.view());
    popover.setSourceRect(CGRectMake(1, 1, 2, 2));
    popover.setBarButtonItem(nil);
    popover.setPermittedArrowDirections(UIPopoverArrowDirection::Up);
    popover.setDelegate(nil);
    EXPECT_NE(popover.arrowDirection(), UIPopoverArrowDirection::Up) << "it isn't shown";
    EXPECT_FALSE(shown.isBeingPresented() || shown.isBeingDismissed());
    root.present(shown, false);
    EXPECT_EQ(root.presentedViewController(), shown);
    EXPECT_EQ(shown.presentingViewController(), root);
    const UIPresentationController presentation = shown.presentationController();
    EXPECT_TRUE(presentation.containerView() && presentation.presentedView());
    EXPECT_GT(presentation.frameOfPresentedViewInContainerView().size.width, 0);
    root.dismiss(false);
    EXPECT_FALSE(root.presentedViewController());

    const auto alert = UIAlertController::with(string("title"), nil, UIAlertControllerStyle::Alert);
    alert.setMessage(string("message"));
    const auto action = UIAlertAction::withTitle(string("OK"), UIAlertActionStyle::Default, nil);
    action.setEnabled(true);
    alert.addAction(action);
    alert.setPreferredAction(action);
    root.present(alert, false);
    EXPECT_EQ(root.presentedViewController(), alert);
}

TEST_F(ControllerHandles, SoAreThoseOfBars)
{
    const auto navigation = UINavigationController::withRootViewController(UIViewController::create());
    const UINavigationItem item = navigation.topViewController().navigationItem();
    item.setTitle(string("title"));
    item.setBackButtonTitle(string("back"));
    item.setHidesBackButton(false);
    item.setLeftBarButtonItem(UIBarButtonItem::withSystemItem(UIBarButtonSystemItem::Done, nil, nullptr));
    const auto button = UIBarButtonItem::withTitle(string("a"), UIBarButtonItemStyle::Plain, nil, nullptr);
    button.setTitle(string("b"));
    button.setEnabled(false);
    item.setRightBarButtonItem(button);
    EXPECT_EQ(send<"rightBarButtonItem">(item), button);
    item.setTitleView(UIView::withFrame(CGRectMake(0, 0, 20, 20)));
    send<"setRightBarButtonItem:", void>(item, UIBarButtonItem::withCustomView(UIView::create()));
    window.setRootViewController(navigation);
    navigation.push(UIViewController::create(), false);
    EXPECT_TRUE(navigation.pop(false));
    EXPECT_EQ(itemsOf(navigation.popToRoot(false)).size(), 0U);
    navigation.setNavigationBarHidden(true, false);
    runUntilIdle();
    EXPECT_TRUE(navigation.navigationBar().isHidden());
}

} // namespace
