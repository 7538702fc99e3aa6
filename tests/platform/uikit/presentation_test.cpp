#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/weak.h"
#include "support/journalled_controller.h"
#include "support/view_test.h"

#include <sstream>

/// The steps of presentations and dismissals, in their order.

namespace {

using namespace platform;
using namespace support;
using namespace std::chrono_literals;

/// What a custom presentation hears.
template <Name S> void heard(const id& self, SEL)
{
    note(std::string(S.view()));
    sendSuper<S, void>(classNamed<"UIPresentationController">(), self);
}
template <Name S> void heardEnd(const id& self, SEL, bool completed)
{
    note(std::string(S.view()) + (completed ? "yes" : "no"));
    sendSuper<S, void>(classNamed<"UIPresentationController">(), self, completed);
}
CGRect lowerHalf(const id& self, SEL)
{
    const CGRect bounds = send<"bounds", CGRect>(send<"containerView">(self));
    return CGRectMake(0, bounds.size.height / 2, bounds.size.width, bounds.size.height / 2);
}
void willPresent(const id& self, SEL)
{
    note("presentationTransitionWillBegin");
    const id coordinator = send<"transitionCoordinator">(send<"presentedViewController">(self));
    if (!coordinator)
        note("no coordinator");
    ask<"animateAlongsideTransition:completion:", bool>(
        coordinator, block([](const id&) { note("alongside"); }), block([](const id& context) {
            note(send<"isCancelled", bool>(context) ? "alongside cancelled" : "alongside done");
        }));
}
constexpr MethodDefinition presentationMethods[] {
    method<"containerViewWillLayoutSubviews", &heard<"containerViewWillLayoutSubviews">>(),
    method<"containerViewDidLayoutSubviews", &heard<"containerViewDidLayoutSubviews">>(),
    method<"dismissalTransitionDidEnd:", &heardEnd<"dismissalTransitionDidEnd:">>(),
    method<"dismissalTransitionWillBegin", &heard<"dismissalTransitionWillBegin">>(),
    method<"frameOfPresentedViewInContainerView", &lowerHalf>(),
    method<"presentationTransitionDidEnd:", &heardEnd<"presentationTransitionDidEnd:">>(),
    method<"presentationTransitionWillBegin", &willPresent>(),
};
const ClassDefinition Half_class {
    .name = "HalfPresentation", .superclassName = "UIPresentationController", .methods = presentationMethods
};

/// Transitioning delegate and animator in one: slides for a quarter of a second, and completes as it is told.
struct SliderFields {
    bool completes = true;
    id presentation {};
};
id presentationFor(const id& self, SEL, const id& presented, const id& presenting, const id& source)
{
    note("presentation of " + titleOf(presented) + " by " + titleOf(presenting) + " for " + titleOf(source));
    id made = send<"initWithPresentedViewController:presentingViewController:">(
        send<"alloc">(id(registerClass(Half_class))), presented, presenting);
    fieldsOf<SliderFields>(self).presentation = made;
    return made;
}
id animatorForPresented(const id& self, SEL, const id&, const id&, const id&)
{
    note("animator");
    return self;
}
id animatorForDismissed(const id& self, SEL, const id&)
{
    note("animator");
    return self;
}
double quarter(const id&, SEL, const id&)
{
    return 0.25;
}
std::string place(const CGRect& frame)
{
    return std::to_string(std::lround(frame.origin.y)) + "+" + std::to_string(std::lround(frame.size.height));
}
void animate(const id& self, SEL, const id& context)
{
    const id to = send<"viewControllerForKey:">(context, string("UITransitionContextToViewController"));
    const id from = send<"viewControllerForKey:">(context, string("UITransitionContextFromViewController"));
    const id toView = send<"viewForKey:">(context, string("UITransitionContextToView"));
    const id fromView = send<"viewForKey:">(context, string("UITransitionContextFromView"));
    note("animate " + titleOf(from) + (fromView ? "" : "-") + ">" + titleOf(to) + (toView ? "" : "-") + " to "
        + place(send<"finalFrameForViewController:", CGRect>(context, to)));
    if (toView) {
        send<"addSubview:", void>(send<"containerView">(context), toView);
        send<"setFrame:", void>(toView, send<"finalFrameForViewController:", CGRect>(context, to));
    }
    const bool completes = fieldsOf<SliderFields>(self).completes;
    const id moving = toView ? toView : fromView;
    send<"setAlpha:", void>(moving, 0.5);
    send<"animateWithDuration:animations:completion:", void>(classObject<"UIView">(), 0.25,
        block([moving] { send<"setAlpha:", void>(moving, 1.0); }),
        block([context, completes](bool) { send<"completeTransition:", void>(context, completes); }));
}
void animationEnded(const id&, SEL, bool completed)
{
    note(completed ? "animationEnded yes" : "animationEnded no");
}
constexpr MethodDefinition sliderMethods[] {
    method<"animateTransition:", &animate>(),
    method<"animationControllerForDismissedController:", &animatorForDismissed>(),
    method<"animationControllerForPresentedController:presentingController:sourceController:", &animatorForPresented>(),
    method<"animationEnded:", &animationEnded>(),
    method<"presentationControllerForPresentedViewController:presentingViewController:sourceViewController:",
        &presentationFor>(),
    method<"transitionDuration:", &quarter>(),
};
const ClassDefinition Slider_class { .name = "Slider", .methods = sliderMethods };

class Presentation : public ViewTest {
protected:
    Presentation()
    {
        send<"setRootViewController:", void>(window, root);
        send<"setHidden:", void>(window, false);
        settled();
    }

    static id controller(const char* name, NSInteger style)
    {
        const id made = send<"new">(id(registerClass(JournalledController_class)));
        send<"setTitle:", void>(made, string(name));
        send<"setModalPresentationStyle:", void>(made, style);
        return made;
    }

    static void present(const id& over, const id& controller, bool animated)
    {
        send<"presentViewController:animated:completion:", void>(
            over, controller, animated, block([] { note("completion"); }));
    }

    static void dismiss(const id& controller, bool animated)
    {
        send<"dismissViewControllerAnimated:completion:", void>(
            controller, animated, block([] { note("completion"); }));
    }

    static constexpr NSInteger fullScreen = 0;
    static constexpr NSInteger custom = 4;
    static constexpr NSInteger overFullScreen = 5;
    const id root = controller("R", fullScreen);
    const id window = send<"new">(classObject<"UIWindow">());
    const id slider = send<"new">(id(registerClass(Slider_class)));
};

TEST_F(Presentation, OfTheWholeScreenTakesThePresenterAway)
{
    for (const bool animated : { false, true }) {
        const std::string a = animated ? " animated" : "";
        const id shown = controller("A", fullScreen);
        present(root, shown, animated);
        EXPECT_EQ(settled(),
            "A loadView, A viewDidLoad, R viewWillDisappear" + a + ", A viewWillAppear" + a
                + " presented, A viewDidAppear" + a + " presented, R viewDidDisappear" + a + ", completion");
        EXPECT_EQ(send<"presentedViewController">(root), shown);
        EXPECT_EQ(send<"presentingViewController">(shown), root);
        EXPECT_EQ(send<"window">(send<"view">(root)), nil);
        EXPECT_EQ((send<"frame", CGRect>(send<"view">(shown))), CGRectMake(0, 0, 300, 200));
        EXPECT_FALSE((send<"isBeingPresented", bool>(shown)));
        dismiss(shown, animated);
        EXPECT_EQ(settled(),
            "A viewWillDisappear" + a + " dismissed, R viewWillAppear" + a + ", R viewDidAppear" + a
                + ", A viewDidDisappear" + a + " dismissed, completion");
        EXPECT_EQ(send<"presentedViewController">(root), nil);
        EXPECT_EQ(send<"presentingViewController">(shown), nil);
        EXPECT_EQ(send<"superview">(send<"view">(root)), window);
        EXPECT_EQ(itemsOf(send<"subviews">(window)).size(), 1U) << "no container stays";
    }
}

TEST_F(Presentation, OverTheScreenLeavesThePresenterWhereItIs)
{
    const id shown = controller("A", overFullScreen);
    present(root, shown, true);
    EXPECT_TRUE((send<"isBeingPresented", bool>(shown)));
    EXPECT_TRUE(send<"transitionCoordinator">(shown));
    EXPECT_EQ(settled(),
        "A loadView, A viewDidLoad, A viewWillAppear animated presented, A viewDidAppear animated presented, "
        "completion");
    EXPECT_EQ(send<"transitionCoordinator">(shown), nil);
    EXPECT_EQ(send<"window">(send<"view">(root)), window);
}

TEST_F(Presentation, ACustomOneIsArrangedByItsDelegate)
{
    const id shown = controller("A", custom);
    send<"setTransitioningDelegate:", void>(shown, slider);
    const id child = controller("C", fullScreen);
    send<"addChildViewController:", void>(root, child);
    takeJournal();
    present(child, shown, true);
    EXPECT_EQ(settled(),
        "presentation of A by R for C, A loadView, A viewDidLoad, presentationTransitionWillBegin, A viewWillAppear "
        "animated presented, animator, animate R->A to 100+100, alongside, animationEnded yes, "
        "presentationTransitionDidEnd:yes, A viewDidAppear animated presented, alongside done, completion");
    EXPECT_EQ((send<"frame", CGRect>(send<"view">(shown))), CGRectMake(0, 100, 300, 100));
    EXPECT_EQ(send<"presentedViewController">(child), shown) << "what its holder shows";
    EXPECT_EQ(send<"presentationController">(shown), fieldsOf<SliderFields>(slider).presentation);
    const id container = send<"containerView">(fieldsOf<SliderFields>(slider).presentation);
    EXPECT_EQ(send<"superview">(container), window);
    send<"setNeedsLayout", void>(container);
    runUntilIdle();
    EXPECT_EQ(takeJournal(), "containerViewWillLayoutSubviews, containerViewDidLayoutSubviews");
    dismiss(shown, true);
    EXPECT_EQ(settled(),
        "dismissalTransitionWillBegin, A viewWillDisappear animated dismissed, animator, animate A>R- to 0+200, "
        "animationEnded yes, dismissalTransitionDidEnd:yes, A viewDidDisappear animated dismissed, completion");
    EXPECT_EQ(send<"window">(send<"view">(shown)), nil);
}

TEST_F(Presentation, WithoutAnAnimationNobodyIsAskedForOne)
{
    const id shown = controller("A", custom);
    send<"setTransitioningDelegate:", void>(shown, slider);
    present(root, shown, false);
    EXPECT_EQ(settled(),
        "presentation of A by R for R, A loadView, A viewDidLoad, presentationTransitionWillBegin, no coordinator, A "
        "viewWillAppear presented, presentationTransitionDidEnd:yes, A viewDidAppear presented, completion");
    EXPECT_EQ((send<"frame", CGRect>(send<"view">(shown))), CGRectMake(0, 100, 300, 100));
}

TEST_F(Presentation, WhatIsNotCompletedIsUndone)
{
    const id shown = controller("A", custom);
    send<"setTransitioningDelegate:", void>(shown, slider);
    fieldsOf<SliderFields>(slider).completes = false;
    present(root, shown, true);
    EXPECT_TRUE(settled().ends_with(
        "animationEnded no, A viewWillDisappear presented, presentationTransitionDidEnd:no, A viewDidDisappear "
        "presented, alongside cancelled"));
    EXPECT_EQ(send<"presentedViewController">(root), nil);
    EXPECT_EQ(send<"superview">(send<"view">(shown)), nil);
    fieldsOf<SliderFields>(slider).completes = true;
    present(root, shown, false);
    settled();
    fieldsOf<SliderFields>(slider).completes = false;
    dismiss(root, true);
    EXPECT_TRUE(
        settled().ends_with("animationEnded no, A viewWillAppear, dismissalTransitionDidEnd:no, A viewDidAppear"));
    EXPECT_EQ(send<"presentedViewController">(root), shown);
    EXPECT_EQ(send<"window">(send<"view">(shown)), window);
    fieldsOf<SliderFields>(slider).completes = true;
    dismiss(root, true);
    EXPECT_TRUE(settled().ends_with("completion"));
}

TEST_F(Presentation, TheWholeStackAboveGoesAndTheTopmostIsSeenToGo)
{
    const id first = controller("A", overFullScreen);
    const id second = controller("B", overFullScreen);
    const id third = controller("C", overFullScreen);
    present(root, first, false);
    present(first, second, false);
    present(second, third, false);
    settled();
    dismiss(first, true);
    EXPECT_EQ(settled(),
        "C viewWillDisappear animated dismissed, B viewWillDisappear dismissed, C viewDidDisappear animated dismissed, "
        "B viewDidDisappear dismissed, completion");
    EXPECT_EQ(send<"presentedViewController">(root), first);
    EXPECT_EQ(send<"presentedViewController">(first), nil);
    present(first, third, false);
    settled();
    dismiss(third, false);
    EXPECT_EQ(send<"presentedViewController">(first), nil) << "the topmost asks for its own end";
    EXPECT_EQ(send<"presentedViewController">(root), first);
    dismiss(first, false);
    EXPECT_EQ(send<"presentedViewController">(root), nil);
}

TEST_F(Presentation, WhatCantBeShownIsComplainedOfAndNothingHappens)
{
    const id shown = controller("A", overFullScreen);
    const id other = controller("B", overFullScreen);
    const id nowhere = controller("N", overFullScreen);
    const auto complaint = [&](const id& over, const id& controller) {
        testing::internal::CaptureStderr();
        present(over, controller, true);
        return testing::internal::GetCapturedStderr();
    };
    EXPECT_NE(complaint(nowhere, other).find("not in the window hierarchy"), std::string::npos);
    EXPECT_NE(complaint(root, root).find("shown already"), std::string::npos);
    present(root, shown, true);
    EXPECT_NE(complaint(root, other).find("already presenting"), std::string::npos);
    EXPECT_NE(complaint(shown, other).find("in progress"), std::string::npos);
    settled();
    EXPECT_NE(complaint(root, other).find("already presenting"), std::string::npos);
    EXPECT_NE(complaint(shown, shown).find("shown already"), std::string::npos);
    EXPECT_THROW((send<"presentViewController:animated:completion:", void>(root, nil, true, nil)), NSException);
    EXPECT_EQ(settled(), "");
    EXPECT_EQ(send<"presentedViewController">(root), shown);
    dismiss(root, false);
    settled();
    dismiss(root, true);
    dismiss(shown, true);
    EXPECT_EQ(settled(), "") << "it has gone already";
}

TEST_F(Presentation, ADismissalInTheMidstOfItWaitsForItsEnd)
{
    const id shown = controller("A", overFullScreen);
    present(root, shown, true);
    dismiss(shown, true);
    EXPECT_TRUE((send<"isBeingPresented", bool>(shown)));
    EXPECT_EQ(settled(),
        "A loadView, A viewDidLoad, A viewWillAppear animated presented, A viewDidAppear animated presented, "
        "completion, A viewWillDisappear animated dismissed, A viewDidDisappear animated dismissed, completion");
    present(root, shown, false);
    settled();
    dismiss(root, true);
    dismiss(root, true);
    EXPECT_EQ(settled(), "A viewWillDisappear animated dismissed, A viewDidDisappear animated dismissed, completion");
    EXPECT_EQ(send<"presentedViewController">(root), nil);
}

TEST_F(Presentation, AContextKeepsItToItsPartOfTheScreen)
{
    constexpr NSInteger overCurrentContext = 6;
    const id part = controller("P", fullScreen);
    send<"setDefinesPresentationContext:", void>(part, true);
    send<"addChildViewController:", void>(root, part);
    send<"setFrame:", void>(send<"view">(part), CGRectMake(10, 20, 100, 50));
    send<"addSubview:", void>(send<"view">(root), send<"view">(part));
    const id shown = controller("A", overCurrentContext);
    present(part, shown, false);
    EXPECT_EQ(send<"presentingViewController">(shown), part);
    EXPECT_EQ((send<"convertRect:toView:", CGRect>(send<"view">(shown), CGRectMake(0, 0, 100, 50), nil)),
        CGRectMake(10, 20, 100, 50));
    EXPECT_EQ((send<"bounds", CGRect>(send<"view">(shown))).size, CGSizeMake(100, 50));
    dismiss(root, false);
    EXPECT_EQ(send<"presentedViewController">(part), shown) << "the root shows nothing";
    dismiss(part, false);
    EXPECT_EQ(send<"presentedViewController">(part), nil);
}

TEST_F(Presentation, NothingOutlivesIt)
{
    std::optional<Weak<NSObject>> seen;
    {
        const id shown = controller("A", 1);
        seen = Weak<NSObject>(shown);
        present(root, shown, true);
        settled();
        dismiss(root, true);
        settled();
    }
    EXPECT_EQ(id(seen->get()), nil);
}

} // namespace
