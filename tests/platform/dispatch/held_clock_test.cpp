#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/dispatch/run_loop.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// What ran, and when: "a@1 | b@2" for milliseconds since the clock was held.
class Journal {
public:
    Journal() { holdClock(); }

    Work entry(std::string what)
    {
        return [this, what] { write(what); };
    }

    void write(const std::string& what)
    {
        const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(clockNow() - start_);
        text_ += (text_.empty() ? "" : " | ") + what + '@' + std::to_string(elapsed.count());
        EXPECT_EQ(std::this_thread::get_id(), thread_);
    }

    std::string take() { return std::exchange(text_, {}); }

private:
    const std::thread::id thread_ = std::this_thread::get_id();
    std::string text_;
    std::chrono::nanoseconds start_ = (holdClock(), clockNow());
};

TEST(HeldClock, StandsStillUntilItIsMoved)
{
    holdClock();
    const double start = CACurrentMediaTime();
    EXPECT_TRUE(clockIsHeld());
    runUntil([] { return false; }, 2ms);
    EXPECT_EQ(CACurrentMediaTime(), start);
    advanceClock(2500ms);
    EXPECT_DOUBLE_EQ(CACurrentMediaTime(), start + 2.5);
    advanceClock(-1s);
    EXPECT_DOUBLE_EQ(CACurrentMediaTime(), start + 2.5);
}

TEST(HeldClock, RunsAllQueuesOnTheCallingThreadInTheOrderOfTheCalls)
{
    Journal journal;
    const dispatch_queue_t serial = dispatch_queue_create("serial");
    dispatch_async(dispatch_get_global_queue(QueuePriority::Background), journal.entry("background"));
    dispatch_async(dispatch_get_main_queue(), journal.entry("main"));
    dispatch_async(serial, [&] {
        journal.write("serial");
        dispatch_async(dispatch_get_main_queue(), journal.entry("queued by serial"));
    });
    dispatch_async(dispatch_get_global_queue(QueuePriority::High), journal.entry("high"));
    EXPECT_EQ(journal.take(), "");
    EXPECT_TRUE(runUntilIdle());
    EXPECT_EQ(journal.take(), "background@0 | main@0 | serial@0 | high@0 | queued by serial@0");
    EXPECT_FALSE(runUntilIdle());
}

TEST(HeldClock, RunsDelayedWorkWhenItsTimeComesAndNotBefore)
{
    Journal journal;
    dispatch_after(5s, dispatch_get_main_queue(), journal.entry("grace over"));
    advanceClock(4900ms);
    EXPECT_EQ(journal.take(), "");
    advanceClock(200ms);
    EXPECT_EQ(journal.take(), "grace over@5000");
}

TEST(HeldClock, OrdersDelayedWorkByTimeAndEqualTimesByTheCalls)
{
    Journal journal;
    const dispatch_queue_t main = dispatch_get_main_queue();
    const dispatch_queue_t global = dispatch_get_global_queue(QueuePriority::Default);
    dispatch_after(3s, main, journal.entry("third"));
    dispatch_after(1s, global, [&] {
        journal.write("first");
        dispatch_after(1s, main, journal.entry("asked for by first"));
        dispatch_async(main, journal.entry("queued by first"));
    });
    dispatch_after(2s, dispatch_queue_create("serial"), journal.entry("second"));
    dispatch_after(2s, main, journal.entry("second's equal"));
    dispatch_after(0s, main, journal.entry("due now"));
    dispatch_after(-1s, main, journal.entry("overdue"));
    dispatch_after(std::chrono::nanoseconds::max(), main, journal.entry("never"));
    dispatch_async(main, journal.entry("queued"));
    advanceClock(3s);
    EXPECT_EQ(journal.take(),
        "queued@0 | due now@0 | overdue@0 | first@1000 | queued by first@1000 | second@2000 | second's equal@2000 | "
        "asked for by first@2000 | third@3000");
}

TEST(HeldClock, MayBeAdvancedByWorkThatItRuns)
{
    Journal journal;
    dispatch_after(1s, dispatch_get_main_queue(), [&] {
        journal.write("outer begins");
        advanceClock(5s);
        journal.write("outer ends");
    });
    dispatch_after(2s, dispatch_get_main_queue(), journal.entry("inner"));
    advanceClock(3s);
    EXPECT_EQ(journal.take(), "outer begins@1000 | inner@2000 | outer ends@6000");
    dispatch_after(1s, dispatch_get_main_queue(), journal.entry("later"));
    advanceClock(1s);
    EXPECT_EQ(journal.take(), "later@7000");
}

} // namespace
