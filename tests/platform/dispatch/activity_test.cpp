#include "platform/dispatch/activity.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/dispatch/run_loop.h"

#include <gtest/gtest.h>

namespace platform {

TEST(Activity, WorkIsDoneForTheActivityThatQueuedItOnEveryQueueAndHoweverLate)
{
    using namespace std::chrono_literals;
    const Activity first = newActivity();
    const Activity second = newActivity();
    EXPECT_NE(first, second);

    std::vector<Activity> seen;
    std::atomic<Activity> seenOnPool { Activity::None };
    const auto see = [&seen] { seen.push_back(currentActivity()); };
    {
        const ActivityScope scope(first);
        dispatch_async(dispatch_get_main_queue(), [&] {
            see();
            dispatch_async(dispatch_get_main_queue(), see);
        });
        dispatch_after(1ms, dispatch_get_main_queue(), see);
        dispatch_async(dispatch_get_global_queue(QueuePriority::Default), [&] { seenOnPool = currentActivity(); });
    }
    dispatch_async(dispatch_get_main_queue(), see);
    {
        // Running the loop inside an activity doesn't give it the work of others.
        const ActivityScope scope(second);
        ASSERT_TRUE(runUntil([&] { return seen.size() == 4 && seenOnPool != Activity::None; }, 5s));
        EXPECT_EQ(currentActivity(), second);
    }
    EXPECT_EQ(currentActivity(), Activity::None);
    std::ranges::sort(seen);
    EXPECT_EQ(seen, (std::vector { Activity::None, first, first, first }));
    EXPECT_EQ(seenOnPool, first);
}

} // namespace platform
