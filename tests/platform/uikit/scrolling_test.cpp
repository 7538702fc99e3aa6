#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIControl.h"
#include "platform/handles/UIScrollView.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/class_definition.h"
#include "support/view_test.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;

/// A delegate that writes down what it hears; of scrolls in a row only one.
struct ScrollWitness : NSObject {
    static const ClassDefinition definition;
    std::string log {};
    double endedAt = 0; ///< its movement, on the clock
    CGPoint velocity {};
    std::optional<CGPoint> wantedTarget {};
    CGPoint target {};

    void didScroll(const id&)
    {
        if (!log.ends_with("scroll "))
            log += "scroll ";
    }
    void willBeginDragging(const id&) { log += "begin "; }
    void willEndDragging(const id&, CGPoint speed, CGPoint* end)
    {
        log += "willEnd ";
        velocity = speed;
        if (wantedTarget)
            *end = *wantedTarget;
        target = *end;
    }
    void didEndDragging(const id&, bool decelerates) { log += decelerates ? "end+ " : "end "; }
    void willDecelerate(const id&) { log += "decelerate "; }
    void didDecelerate(const id&)
    {
        log += "rest ";
        endedAt = CACurrentMediaTime();
    }
    void didAnimate(const id&) { log += "animated "; }
    std::string told() { return std::exchange(log, {}); }
};
constexpr MethodDefinition witnessMethods[] {
    method<"scrollViewDidEndDecelerating:", &ScrollWitness::didDecelerate>(),
    method<"scrollViewDidEndDragging:willDecelerate:", &ScrollWitness::didEndDragging>(),
    method<"scrollViewDidEndScrollingAnimation:", &ScrollWitness::didAnimate>(),
    method<"scrollViewDidScroll:", &ScrollWitness::didScroll>(),
    method<"scrollViewWillBeginDecelerating:", &ScrollWitness::willDecelerate>(),
    method<"scrollViewWillBeginDragging:", &ScrollWitness::willBeginDragging>(),
    method<"scrollViewWillEndDragging:withVelocity:targetContentOffset:", &ScrollWitness::willEndDragging>(),
};
const ClassDefinition ScrollWitness::definition {
    .name = "ScrollWitness", .allocate = allocate<ScrollWitness>, .methods = witnessMethods
};

template <Name Phase> void noteTouch(const id& self, SEL, const id&, const id&)
{
    fieldsOf<std::string>(self) += std::string(Phase.view()) + " ";
}
constexpr MethodDefinition contentMethods[] {
    method<"touchesBegan:withEvent:", &noteTouch<"began">>(),
    method<"touchesCancelled:withEvent:", &noteTouch<"cancelled">>(),
    method<"touchesEnded:withEvent:", &noteTouch<"ended">>(),
    method<"touchesMoved:withEvent:", &noteTouch<"moved">>(),
};
const ClassDefinition Content_class { .name = "TouchedView", .superclassName = "UIView", .methods = contentMethods };

class Scrolling : public support::ViewTest {
protected:
    UIWindow window { makeWindow() };
    UIScrollView scroll = UIScrollView::withFrame(CGRectMake(0, 0, 300, 200));
    Ref<ScrollWitness> witness = make<ScrollWitness>();

    Scrolling()
    {
        scroll.setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior::Never);
        scroll.setContentSize({ 300, 100'000 });
        scroll.setDelegate(witness);
        window.setBackgroundColor(UIColor::white());
        window.addSubview(scroll);
        runUntilIdle();
    }

    double y() const { return scroll.contentOffset().y; }

    /// Draws a finger by that much in so many steps, each a hundredth of a second, from that point on.
    static CGPoint draw(CGPoint from, CGPoint step, int steps)
    {
        touchScreenAt(from, TouchKind::Began);
        for (int count = 0; count < steps; ++count) {
            advanceClock(10ms);
            from = { from.x + step.x, from.y + step.y };
            touchScreenAt(from, TouchKind::Moved);
        }
        return from;
    }
    static void fling(CGPoint from, CGPoint step, int steps)
    {
        touchScreenAt(draw(from, step, steps), TouchKind::Ended);
    }
    static void rest() { advanceClock(20s); }
};

TEST_F(Scrolling, AFlingGoesAsFarAndAsLongAsItsRateSays)
{
    constexpr double pixel = 0.5;
    for (const double rate : { UIScrollViewDecelerationRateNormal, UIScrollViewDecelerationRateFast })
        for (const double speed : { 250.0, 1000.0, 2400.0 }) { // points a second
            scroll.setDecelerationRate(rate);
            scroll.setContentOffset({ 0, 20'000 });
            fling({ 150, 190 }, { 0, -speed / 100 }, 8);
            const double lifted = y();
            const double liftedAt = CACurrentMediaTime();
            EXPECT_TRUE(scroll.isDecelerating());
            rest();
            // Each millisecond keeps that part of the speed: a geometric series.
            const double way = speed / 1000 * rate / (1 - rate);
            EXPECT_NEAR(y() - lifted, way, pixel) << rate << ' ' << speed;
            const double duration = std::log(pixel / 2 / way) / std::log(rate) / 1000;
            const double frame = 1 / 60.0;
            EXPECT_GE(witness->endedAt - liftedAt, duration - 0.001) << rate << ' ' << speed;
            EXPECT_LE(witness->endedAt - liftedAt, duration + frame + 0.001) << rate << ' ' << speed;
            EXPECT_NEAR(witness->velocity.y, speed / 1000, 1e-6);
            EXPECT_NEAR(witness->target.y, lifted + way, 1e-3);
        }
}

TEST_F(Scrolling, TheDelegateHearsOfEachStepInItsOrder)
{
    const struct {
        const char* what;
        std::function<void()> action;
        const char* messages;
    } cases[] {
        { "a fling",
            [&] {
                fling({ 150, 150 }, { 0, -10 }, 6);
            },
            "begin scroll willEnd end+ decelerate scroll rest " },
        { "a drag that rests before it ends",
            [&] {
                const CGPoint last = draw({ 150, 150 }, { 0, -10 }, 6);
                advanceClock(300ms);
                touchScreenAt(last, TouchKind::Ended);
            },
            "begin scroll willEnd end " },
        { "a touch alone",
            [&] {
                fling({ 150, 150 }, { 0, -1 }, 3);
            },
            "" },
        { "across, where there is nothing",
            [&] {
                fling({ 150, 150 }, { -10, 0 }, 6);
            },
            "" },
        { "by the program",
            [&] {
                scroll.setContentOffset({ 0, 500 });
            },
            "scroll " },
        { "to where it is",
            [&] {
                scroll.setContentOffset({ 0, 500 }, true);
            },
            "" },
        { "animated",
            [&] {
                scroll.setContentOffset({ 0, 700 }, true);
            },
            "scroll animated " },
        { "a touch that ends a movement",
            [&] {
                fling({ 150, 150 }, { 0, -10 }, 6);
                advanceClock(100ms);
                touchScreenAt({ 150, 150 }, TouchKind::Began);
                touchScreenAt({ 150, 150 }, TouchKind::Ended);
            },
            "begin scroll willEnd end+ decelerate scroll rest " },
        { "a cancelled drag",
            [&] {
                touchScreenAt(draw({ 150, 150 }, { 0, -10 }, 6), TouchKind::Cancelled);
            },
            "begin scroll willEnd end " },
        { "scrolling that is switched off",
            [&] {
                scroll.setScrollEnabled(false);
                fling({ 150, 150 }, { 0, -10 }, 6);
            },
            "" },
    };
    for (const auto& [what, action, messages] : cases) {
        action();
        rest();
        EXPECT_EQ(witness->told(), messages) << what;
        EXPECT_FALSE(scroll.isTracking() || scroll.isDragging() || scroll.isDecelerating()) << what;
    }
}

TEST_F(Scrolling, WhoIsAskedForTheTargetMayMoveIt)
{
    witness->wantedTarget = CGPoint { 0, 640 };
    fling({ 150, 150 }, { 0, -10 }, 6);
    rest();
    EXPECT_EQ(y(), 640);
}

TEST_F(Scrolling, BeyondAnEndItFollowsLikeARubberBandAndSpringsBack)
{
    // The first step that is further than ten points begins the drag: 90 of 100 points count.
    const CGPoint last = draw({ 150, 20 }, { 0, 10 }, 11);
    const double pulled = 90;
    const double seen = (1 - 1 / (pulled * 0.55 / 200 + 1)) * 200;
    EXPECT_NEAR(y(), -seen, 0.5);
    touchScreenAt(last, TouchKind::Ended);
    advanceClock(100ms);
    EXPECT_LT(y(), 0);
    EXPECT_GT(y(), -seen);
    rest();
    EXPECT_EQ(y(), 0);
    EXPECT_EQ(witness->told(), "begin scroll willEnd end+ decelerate scroll rest ");
    scroll.setBounces(false);
    draw({ 150, 20 }, { 0, 10 }, 11);
    EXPECT_EQ(y(), 0);
}

TEST_F(Scrolling, AFlingRunsPastTheEndAndComesBackToIt)
{
    scroll.setContentSize({ 300, 500 });
    double furthest = 0;
    fling({ 150, 190 }, { 0, -20 }, 8);
    for (int count = 0; count < 300; ++count) {
        advanceClock(10ms);
        furthest = std::max(furthest, y());
    }
    EXPECT_GT(furthest, 305);
    EXPECT_LT(furthest, 400);
    EXPECT_EQ(y(), 300);
    EXPECT_FALSE(scroll.isDecelerating());
}

TEST_F(Scrolling, PagesAreTurnedOneAtATime)
{
    scroll.setPagingEnabled(true);
    scroll.setContentSize({ 1500, 200 });
    const struct {
        double step;
        int steps;
        std::chrono::milliseconds pause;
        double page;
    } cases[] {
        { -20, 8, 0ms, 1 },
        { -25, 9, 0ms, 2 },
        { 20, 4, 0ms, 1 },
        { -10, 12, 300ms, 1 }, // less than half a page, and no speed
        { -20, 11, 300ms, 2 },
        { 20, 4, 0ms, 1 },
        { 20, 4, 0ms, 0 },
        { 20, 4, 0ms, 0 },
    };
    for (const auto& [step, steps, pause, page] : cases) {
        const CGPoint last = draw({ step < 0 ? 290.0 : 10.0, 100 }, { step, 0 }, steps);
        advanceClock(pause);
        touchScreenAt(last, TouchKind::Ended);
        rest();
        EXPECT_EQ(scroll.contentOffset().x, page * 300) << step << " x " << steps;
    }
}

TEST_F(Scrolling, WhatStandsInItGetsTouchesLateAndLosesThemToAScroll)
{
    const UIView content(send<"new">(id(registerClass(Content_class))));
    content.setFrame(CGRectMake(0, 0, 300, 1000));
    scroll.addSubview(content);
    const auto told = [&] { return std::exchange(fieldsOf<std::string>(content), {}); };
    const auto hold = [&](std::chrono::milliseconds time) {
        scroll.setContentOffset({});
        told();
        touchScreenAt({ 150, 150 }, TouchKind::Began);
        advanceClock(time);
    };
    hold(149ms);
    EXPECT_EQ(told(), "");
    advanceClock(1ms);
    EXPECT_EQ(told(), "began ");
    touchScreenAt({ 150, 150 }, TouchKind::Ended);
    EXPECT_EQ(told(), "ended ");
    hold(10ms);
    touchScreenAt({ 150, 150 }, TouchKind::Ended);
    EXPECT_EQ(told(), "began ended ") << "a quick tap arrives whole";
    fling({ 150, 150 }, { 0, -10 }, 5);
    rest();
    EXPECT_EQ(told(), "") << "of a scroll it never hears";
    hold(200ms);
    touchScreenAt({ 150, 120 }, TouchKind::Moved);
    touchScreenAt({ 150, 100 }, TouchKind::Moved);
    EXPECT_EQ(told(), "began cancelled ");
    EXPECT_TRUE(scroll.isDragging());
    touchScreenAt({ 150, 100 }, TouchKind::Ended);
    rest();
    scroll.setCanCancelContentTouches(false);
    hold(200ms);
    touchScreenAt({ 150, 120 }, TouchKind::Moved);
    touchScreenAt({ 150, 120 }, TouchKind::Ended);
    EXPECT_EQ(told(), "began moved ended ");
    EXPECT_EQ(y(), 0);
    scroll.setDelaysContentTouches(false);
    hold(0ms);
    EXPECT_EQ(told(), "began ");
    touchScreenAt({ 150, 150 }, TouchKind::Ended);
}

TEST_F(Scrolling, ATouchThatEndsAMovementIsNobodyElses)
{
    const UIView content(send<"new">(id(registerClass(Content_class))));
    content.setFrame(CGRectMake(0, 0, 300, 100'000));
    scroll.addSubview(content);
    fling({ 150, 150 }, { 0, -20 }, 6);
    advanceClock(50ms);
    touchScreenAt({ 150, 150 }, TouchKind::Began);
    const double caught = y();
    advanceClock(1s);
    touchScreenAt({ 150, 150 }, TouchKind::Ended);
    rest();
    EXPECT_EQ(y(), caught);
    EXPECT_EQ(fieldsOf<std::string>(content), "");
}

TEST_F(Scrolling, AControlThatHasATouchKeepsIt)
{
    const UIControl control = UIControl::withFrame(CGRectMake(0, 0, 300, 200));
    scroll.addSubview(control);
    touchScreenAt({ 150, 150 }, TouchKind::Began);
    advanceClock(200ms);
    EXPECT_TRUE(control.isTracking());
    touchScreenAt({ 150, 100 }, TouchKind::Moved);
    EXPECT_TRUE(control.isTracking());
    EXPECT_EQ(y(), 0);
    touchScreenAt({ 150, 100 }, TouchKind::Ended);
    advanceClock(1s);
    fling({ 150, 150 }, { 0, -10 }, 6);
    EXPECT_GT(y(), 0) << "a quick finger scrolls";
    EXPECT_FALSE(control.isTracking());
}

TEST_F(Scrolling, ARectangleIsBroughtIntoSightAndNoFurther)
{
    const struct {
        double from;
        CGRect rect;
        double to;
    } cases[] {
        { 0, CGRectMake(0, 50, 10, 10), 0 },
        { 0, CGRectMake(0, 300, 10, 10), 110 },
        { 500, CGRectMake(0, 300, 10, 10), 300 },
        { 0, CGRectMake(0, 300, 10, 400), 300 },
        { 0, CGRectMake(0, 99'990, 10, 50), 99'800 },
    };
    for (const auto& [from, rect, to] : cases) {
        scroll.setContentOffset({ 0, from });
        scroll.scrollRectToVisible(rect, false);
        EXPECT_EQ(y(), to) << from;
    }
}

TEST_F(Scrolling, InsetsMoveTheBeginningAndWhatStandsAtIt)
{
    scroll.setContentInset({ 30, 0, 20, 0 });
    EXPECT_EQ(y(), -30);
    scroll.setContentOffset({ 0, 100 });
    scroll.setContentInset({ 50, 0, 20, 0 });
    EXPECT_EQ(y(), 100) << "in the middle nothing moves";
    scroll.setContentSize({ 300, 250 });
    EXPECT_EQ(y(), 70) << "contents that end earlier";
    scroll.setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior::Automatic);
    scroll.layoutIfNeeded();
    EXPECT_EQ(scroll.adjustedContentInset().top, 50 + scroll.safeAreaInsets().top);
    EXPECT_GT(scroll.safeAreaInsets().top, 0);
}

TEST_F(Scrolling, ABarShowsWhileItMovesAndGoesAfterwards)
{
    const auto bar = [] { return descriptionOfScreen().find("Indicator (") != std::string::npos; };
    EXPECT_FALSE(bar());
    fling({ 150, 150 }, { 0, -10 }, 6);
    EXPECT_TRUE(bar());
    rest();
    EXPECT_FALSE(bar());
    EXPECT_FALSE(runUntilIdle());
    const std::string still = pictureOfScreen(1);
    scroll.flashScrollIndicators();
    EXPECT_NE(pictureOfScreen(1), still);
    rest();
    EXPECT_EQ(pictureOfScreen(1), still);
}

} // namespace
