#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "support/view_test.h"

#include <cmath>

namespace {

using namespace platform;
using namespace std::chrono_literals;
using support::classObject;

class Animations : public support::ViewTest {
protected:
    id window = makeWindow();
    id view = makeView(CGRectMake(0, 0, 100, 100));

    Animations() { send<"addSubview:", void>(window, view); }

    id moveTo(double y)
    {
        return block([this, y] { send<"setFrame:", void>(view, CGRectMake(0, y, 100, 100)); });
    }

    /// Where the view is seen, to a hundredth.
    static double seen()
    {
        const std::string text = descriptionOfScreen();
        return std::stod(text.substr(text.find("UIView (0, ") + 11));
    }

    void spring(double damping, double velocity)
    {
        send<"setFrame:", void>(view, CGRectMake(0, 0, 100, 100));
        send<"animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:animations:completion:",
            void>(classObject<"UIView">(), 0.5, 0.0, damping, velocity, NSUInteger { 0 }, moveTo(1000), nil);
    }
};

TEST_F(Animations, ASpringStartsAsFastAsItIsTold)
{
    for (const double damping : { 0.5, 0.8, 1.0 })
        for (const double velocity : { 0.0, 2.0, 10.0, -4.0 }) {
            spring(damping, velocity);
            advanceClock(1ms);
            // Of 1000 points, in a thousandth of a second; what the spring itself adds is of second order.
            EXPECT_NEAR(seen(), velocity, 0.8) << damping << ' ' << velocity;
            advanceClock(499ms);
            EXPECT_EQ(seen(), 1000);
        }
}

TEST_F(Animations, WhatIsDoneWithoutAnimationIsDoneAtOnceHoweverItIsNested)
{
    std::string outcome;
    const id nested = block([&] {
        EXPECT_FALSE((send<"areAnimationsEnabled", bool>(classObject<"UIView">())));
        send<"animateWithDuration:animations:completion:", void>(classObject<"UIView">(), 1.0, moveTo(50),
            block([&](bool finished) { outcome += finished ? "done " : "no "; }));
    });
    send<"performWithoutAnimation:", void>(classObject<"UIView">(), nested);
    EXPECT_EQ(seen(), 50);
    runUntilIdle();
    EXPECT_EQ(outcome, "done ");
    EXPECT_TRUE((send<"areAnimationsEnabled", bool>(classObject<"UIView">())));
    send<"animateWithDuration:animations:", void>(classObject<"UIView">(), 1.0,
        block([&] { send<"performWithoutAnimation:", void>(classObject<"UIView">(), moveTo(80)); }));
    EXPECT_EQ(seen(), 80);
    send<"animateWithDuration:animations:", void>(classObject<"UIView">(), 1.0, moveTo(100));
    EXPECT_EQ(seen(), 80) << "and afterwards all is as before";
}

} // namespace
