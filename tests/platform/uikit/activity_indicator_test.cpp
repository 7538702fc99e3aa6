#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/handles/UIActivityIndicatorView.h"
#include "platform/handles/UIWindow.h"
#include "support/view_test.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;

class Wheel : public support::ViewTest { };

TEST_F(Wheel, AWheelTurnsWithTheClockAndCostsNothingOnceItStops)
{
    const auto wheel = UIActivityIndicatorView::withStyle(UIActivityIndicatorViewStyle::Large);
    const UIWindow window(makeWindow());
    window.addSubview(wheel);
    wheel.startAnimating();
    runUntilIdle();
    const std::string first = pictureOfScreen(2);
    advanceClock(130ms);
    EXPECT_NE(pictureOfScreen(2), first);
    advanceClock(880ms);
    EXPECT_EQ(pictureOfScreen(2), first) << "a turn takes a second";
    EXPECT_FALSE(runUntilIdle()) << "nobody is woken for it";
    wheel.setHidesWhenStopped(false);
    wheel.stopAnimating();
    EXPECT_FALSE(wheel.isAnimating());
    const std::string stopped = pictureOfScreen(2);
    advanceClock(130ms);
    EXPECT_EQ(pictureOfScreen(2), stopped);
}

} // namespace
