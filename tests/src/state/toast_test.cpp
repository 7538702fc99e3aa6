#include "state/toast.h"

#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "state/custom_toast_view.h"
#include "support/golden.h"
#include "support/view_test.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace platform;
using namespace std::chrono_literals;

namespace {

class Toast : public support::ViewTest {
protected:
    Toast() { setScreen({ 390, 844 }, 2); }

    static void show(const char* title, long autoHide, const id& icon = nil)
    {
        appledger::presentToast(string(title), string("BG Stopped"), icon, autoHide);
        runUntilIdle();
    }

    static void pass(std::chrono::milliseconds time)
    {
        advanceClock(time);
        runUntilIdle();
    }

    static id symbol()
    {
        return send<"systemImageNamed:">(support::classObject<"UIImage">(), string("exclamationmark.triangle.fill"));
    }

    static std::vector<id> toasts(const id& window)
    {
        std::vector<id> found;
        const id views = send<"subviews">(window);
        for (const id& view : itemsOf(views))
            if (isKindOfClass(view, appledger::customToastViewClass()))
                found.push_back(view);
        return found;
    }
};

TEST_F(Toast, StandsFortyPointsUnderTheTopWithItsTextsCentred)
{
    const id window = makeWindow();
    show("Scribbles", 0);
    EXPECT_GOLDEN(descriptionOfScreen(), "toast-sliding-in.txt");
    pass(300ms);
    EXPECT_GOLDEN(descriptionOfScreen(), "toast.txt");
}

TEST_F(Toast, IsADarkPillWithAShadow)
{
    const id window = makeWindow();
    show("Scribbles", 0);
    const id container = send<"containerView">(toasts(window)[0]);
    const id layer = send<"layer">(container);
    double color[4] {};
    send<"getRed:green:blue:alpha:", bool>(
        send<"backgroundColor">(container), &color[0], &color[1], &color[2], &color[3]);
    std::ostringstream look;
    for (const double part : color)
        look << part << ' ';
    const CGSize offset = send<"shadowOffset", CGSize>(layer);
    look << "radius " << send<"cornerRadius", CGFloat>(layer) << " shadow " << send<"shadowOpacity", float>(layer)
         << " (" << offset.width << ", " << offset.height << ") " << send<"shadowRadius", CGFloat>(layer)
         << (send<"shadowColor">(layer) ? " coloured" : "");
    EXPECT_EQ(look.str(), "0.125 0.125 0.125 1 radius 25 shadow 0.18 (0, 8) 10 coloured");
}

TEST_F(Toast, HasItsIconBeforeTheTexts)
{
    const id window = makeWindow();
    show("Scribbles", 0, symbol());
    pass(300ms);
    EXPECT_GOLDEN(descriptionOfScreen(), "toast-with-icon.txt");
}

TEST_F(Toast, LeavesSoManySecondsAfterItWasMade)
{
    const id window = makeWindow();
    show("Scribbles", 3);
    pass(2999ms);
    EXPECT_EQ(toasts(window).size(), 1U);
    const double y = send<"frame", CGRect>(toasts(window)[0]).origin.y;
    EXPECT_EQ(y, 40);
    pass(1ms);
    EXPECT_EQ((send<"frame", CGRect>(toasts(window)[0]).origin.y), 40 - 30 - 70);
    pass(199ms);
    EXPECT_EQ(toasts(window).size(), 1U);
    pass(1ms);
    EXPECT_EQ(toasts(window).size(), 0U);
}

TEST_F(Toast, StaysWithoutASecondToLeaveAfter)
{
    const id window = makeWindow();
    show("Scribbles", 0);
    pass(3600s);
    EXPECT_EQ(toasts(window).size(), 1U);
}

TEST_F(Toast, GivesWayToTheNextOne)
{
    const id window = makeWindow();
    show("First", 3);
    pass(1s);
    show("Second", 3);
    EXPECT_EQ(toasts(window).size(), 2U) << "one slides out while the other slides in";
    pass(200ms);
    ASSERT_EQ(toasts(window).size(), 1U);
    EXPECT_EQ(asString(send<"text">(send<"titleLabel">(toasts(window)[0])))->view(), "Second");
    pass(2800ms);
    EXPECT_EQ(toasts(window).size(), 1U) << "the first one's time is no concern of the second";
}

TEST_F(Toast, StaysWhereItsLeavingIsInterrupted)
{
    const id window = makeWindow();
    show("Scribbles", 0);
    pass(300ms);
    const id toast = toasts(window)[0];
    send<"hideWithAnimation", void>(toast);
    pass(100ms);
    send<"setTransform:", void>(toast, CGAffineTransformIdentity);
    pass(1s);
    EXPECT_EQ(toasts(window).size(), 1U);
}

TEST_F(Toast, TakesTheTopmostWindowThatCanBeSeen)
{
    const id lower = makeWindow();
    const id upper = makeWindow();
    const id unseen = makeWindow();
    send<"setAlpha:", void>(unseen, 0.0);
    const id hidden = makeWindow();
    send<"setHidden:", void>(hidden, true);
    show("Scribbles", 1);
    EXPECT_EQ(toasts(upper).size(), 1U);
    send<"setHidden:", void>(upper, true);
    send<"setHidden:", void>(lower, true);
    show("Nobody sees this", 1);
    pass(10s);
    EXPECT_EQ(toasts(lower).size(), 0U);
}

TEST_F(Toast, HasNoWidthInANarrowWindow)
{
    setScreen({ 150, 300 }, 1);
    const id window = makeWindow();
    show("Scribbles", 0, symbol());
    pass(300ms);
    EXPECT_LE((send<"frame", CGRect>(toasts(window)[0]).size.width), 0);
    EXPECT_FALSE(pictureOfScreen(1).empty());
}

} // namespace
