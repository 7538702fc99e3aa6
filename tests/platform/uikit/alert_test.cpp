#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "support/view_test.h"

using namespace platform;
using namespace std::chrono_literals;
using support::classObject;

namespace {

class Alert : public support::ViewTest {
protected:
    Alert()
    {
        setScreen({ 390, 844 }, 2);
        send<"setFrame:", void>(window, CGRectMake(0, 0, 390, 844));
        send<"setRootViewController:", void>(window, below);
        send<"setHidden:", void>(window, false);
        runUntilIdle();
    }

    static id make(NSInteger style)
    {
        return send<"alertControllerWithTitle:message:preferredStyle:">(
            classObject<"UIAlertController">(), string("Title"), string("What has happened"), style);
    }

    id addAction(const char* title, NSInteger style)
    {
        id action = send<"actionWithTitle:style:handler:">(
            classObject<"UIAlertAction">(), string(title), style, block([this](const id& chosen) {
                told += describe(send<"title">(chosen));
                told += send<"presentedViewController">(below) ? " too early" : "";
            }));
        send<"addAction:", void>(alert, action);
        return action;
    }

    void present()
    {
        send<"presentViewController:animated:completion:", void>(
            below, alert, true, block([this] { told += "presented "; }));
        settle();
    }

    static void settle()
    {
        advanceClock(2s);
        runUntilIdle();
    }

    static void tap(CGPoint point)
    {
        touchScreenAt(point, TouchKind::Began);
        touchScreenAt(point, TouchKind::Ended);
        settle();
    }

    /// The middle of the label of that text on the screen; below everything for none.
    static CGPoint middleOf(const id& view, const char* text)
    {
        if (const auto shown = asString(askObject<"text">(view)); shown && *shown == text) {
            const CGRect bounds = send<"bounds", CGRect>(view);
            return send<"convertPoint:toView:", CGPoint>(
                view, CGPointMake(bounds.size.width / 2, bounds.size.height / 2), nil);
        }
        CGPoint found { 0, 5000 };
        for (const id& subview : itemsOf(send<"subviews">(view)))
            if (const CGPoint inside = middleOf(subview, text); inside.y < found.y)
                found = inside;
        return found;
    }
    CGPoint middleOf(const char* text) const { return middleOf(window, text); }

    const id window = send<"new">(classObject<"UIWindow">());
    const id below = send<"new">(classObject<"UIViewController">());
    id alert = make(1);
    std::string told;
};

TEST_F(Alert, StandsBeforeEverythingUntilAFingerAnswers)
{
    addAction("Delete", 2);
    addAction("Cancel", 1);
    present();
    EXPECT_EQ(told, "presented ");
    EXPECT_EQ(send<"presentedViewController">(below), alert);
    const CGRect box = send<"frame", CGRect>(send<"view">(alert));
    EXPECT_EQ(box.size.width, 270);
    EXPECT_NEAR(box.origin.y + box.size.height / 2, 422, 1);
    EXPECT_LT(middleOf("Title").y, middleOf("What has happened").y);
    EXPECT_EQ(middleOf("Cancel").y, middleOf("Delete").y) << "two that fit stand beside each other";
    EXPECT_LT(middleOf("Cancel").x, middleOf("Delete").x);
    tap({ 195, 100 });
    EXPECT_EQ(told, "presented ") << "beside it";
    touchScreenAt(middleOf("Cancel"), TouchKind::Began);
    touchScreenAt({ 195, 100 }, TouchKind::Moved);
    touchScreenAt({ 195, 100 }, TouchKind::Ended);
    settle();
    EXPECT_EQ(told, "presented ") << "a finger that leaves has chosen nothing";
    tap(middleOf("Delete"));
    EXPECT_EQ(told, "presented \"Delete\"");
    EXPECT_EQ(send<"presentedViewController">(below), nil);
    EXPECT_EQ(descriptionOfScreen().find("\"Title\""), std::string::npos);
}

TEST_F(Alert, IsAnsweredOnceAndByItsOwnActions)
{
    const id off = addAction("Off", 0);
    send<"setEnabled:", void>(off, false);
    const id yes = addAction("Yes", 0);
    present();
    told.clear();
    tap(middleOf("Off"));
    for (const id& other : { off, id(), string("Yes") })
        send<"_choose:", void>(alert, other);
    settle();
    EXPECT_EQ(told, "");
    EXPECT_TRUE(send<"presentedViewController">(below));
    send<"setEnabled:", void>(off, true);
    send<"_choose:", void>(alert, yes);
    send<"_choose:", void>(alert, off);
    EXPECT_EQ(told, "") << "the handler waits for the alert to go";
    settle();
    EXPECT_EQ(told, "\"Yes\"");
}

TEST_F(Alert, CancelStandsLastAndIsThereOnce)
{
    addAction("Cancel", 1);
    addAction("First", 0);
    const id second = addAction("Second", 0);
    EXPECT_THROW(addAction("Again", 1), NSException);
    EXPECT_THROW((send<"setPreferredAction:", void>(alert, send<"new">(classObject<"UIAlertAction">()))), NSException);
    send<"setPreferredAction:", void>(alert, second);
    EXPECT_EQ(send<"preferredAction">(alert), second);
    EXPECT_EQ(itemsOf(send<"actions">(alert)).size(), 3U);
    EXPECT_EQ(describe(send<"title">(itemsOf(send<"actions">(alert))[0])), "\"Cancel\"") << "as they were added";
    present();
    EXPECT_LT(middleOf("First").y, middleOf("Second").y);
    EXPECT_LT(middleOf("Second").y, middleOf("Cancel").y);
    addAction("Third", 0);
    settle();
    EXPECT_LT(middleOf("Third").y, middleOf("Cancel").y) << "one that comes while it is shown";
    EXPECT_LT(middleOf("Second").y, middleOf("Third").y);
}

TEST_F(Alert, WithoutAnyButtonWaitsForItsEndFromOutside)
{
    present();
    tap({ 195, 422 });
    EXPECT_EQ(send<"presentedViewController">(below), alert);
    send<"dismissViewControllerAnimated:completion:", void>(below, true, block([this] { told += "gone"; }));
    settle();
    EXPECT_EQ(told, "presented gone");
    EXPECT_EQ(send<"presentedViewController">(below), nil);
}

TEST_F(Alert, AnActionSheetStandsAtTheBottomAndIsCancelledBesideIt)
{
    alert = make(0);
    addAction("Cancel", 1);
    addAction("One", 0);
    addAction("Two", 2);
    present();
    const CGRect box = send<"frame", CGRect>(send<"view">(alert));
    EXPECT_EQ(box.origin.x, 8);
    EXPECT_EQ(box.size.width, 374);
    EXPECT_EQ(box.origin.y + box.size.height, 844 - 34);
    EXPECT_LT(middleOf("Two").y + 57, middleOf("Cancel").y) << "and cancel apart";
    tap(middleOf("One"));
    EXPECT_EQ(told, "presented \"One\"");
    present();
    tap({ 195, 100 });
    EXPECT_EQ(told, "presented \"One\"presented \"Cancel\"");
}

TEST_F(Alert, OnThePadAnActionSheetIsABubbleBesideItsSource)
{
    setScreen({ 820, 1180 }, 2);
    send<"setFrame:", void>(window, CGRectMake(0, 0, 820, 1180));
    alert = make(0);
    addAction("Cancel", 1);
    addAction("One", 0);
    const id source = makeView(CGRectMake(400, 300, 40, 40));
    send<"addSubview:", void>(send<"view">(below), source);
    const id popover = send<"popoverPresentationController">(alert);
    ASSERT_TRUE(popover);
    send<"setSourceView:", void>(popover, source);
    send<"setSourceRect:", void>(popover, CGRectMake(0, 0, 40, 40));
    send<"setPermittedArrowDirections:", void>(popover, NSUInteger { 3 });
    present();
    EXPECT_EQ((send<"arrowDirection", NSUInteger>(popover)), 1U);
    const CGRect bubble = send<"frame", CGRect>(send<"presentedView">(popover));
    EXPECT_EQ(bubble.origin.y, 340) << "its tip touches the source";
    EXPECT_EQ(bubble.origin.x + bubble.size.width / 2, 420);
    EXPECT_EQ(middleOf("Cancel").y, 5000) << "beside it is cancel";
    tap({ 100, 1000 });
    EXPECT_EQ(send<"presentedViewController">(below), nil);
    send<"setPermittedArrowDirections:", void>(send<"popoverPresentationController">(alert), NSUInteger { 2 });
}

} // namespace
