#include "platform/dispatch/queue.h"

#include "platform/dispatch/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <latch>
#include <mutex>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

TEST(SerialQueue, RunsOnePieceAtATimeInTheOrderOfEachThreadsCalls)
{
    constexpr int threadCount = 4;
    constexpr int workCount = 500;
    std::vector<std::pair<int, int>> journal; // not guarded: the queue is the guard
    std::latch done(threadCount * workCount);
    {
        const dispatch_queue_t queue = dispatch_queue_create("org.appledger.serial");
        EXPECT_EQ(dispatch_queue_get_label(queue), "org.appledger.serial");
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([&, thread] {
                for (int work = 0; work < workCount; ++work)
                    dispatch_async(queue, [&, thread, work] {
                        journal.emplace_back(thread, work);
                        done.count_down();
                    });
            });
    }
    // Nobody holds the queue any more; it lives until its work is done.
    done.wait();
    std::vector<int> next(threadCount, 0);
    for (const auto& [thread, work] : journal)
        EXPECT_EQ(work, next[static_cast<std::size_t>(thread)]++);
    EXPECT_EQ(journal.size(), std::size_t { threadCount * workCount });
}

TEST(GlobalQueue, RunsWorkOnOtherThreadsAndSeveralAtOnce)
{
    // Each waits for the other, so they end only when both run at the same time.
    std::latch both(2);
    std::latch done(2);
    for (const QueuePriority priority : { QueuePriority::Default, QueuePriority::Background })
        dispatch_async(dispatch_get_global_queue(priority), [&, caller = std::this_thread::get_id()] {
            EXPECT_NE(std::this_thread::get_id(), caller);
            both.arrive_and_wait();
            done.count_down();
        });
    done.wait();
}

TEST(GlobalQueue, TakesWhatIsMoreUrgentFirst)
{
    // Fill every thread, queue from the least urgent to the most, then let go one thread alone.
    std::mutex mutex;
    std::string journal;
    // The filling threads may end after the test.
    static std::counting_semaphore<> started(0);
    static std::counting_semaphore<> release(0);
    constexpr int fill = 10;
    for (int index = 0; index < fill; ++index)
        dispatch_async(dispatch_get_global_queue(QueuePriority::High), [] {
            started.release();
            release.acquire();
        });
    for (int index = 0; index < fill; ++index)
        started.acquire();
    std::latch done(4);
    const auto queue = [&](QueuePriority priority, const char* name) {
        dispatch_async(dispatch_get_global_queue(priority), [&, name] {
            {
                const std::lock_guard lock(mutex);
                journal += name;
            }
            done.count_down();
        });
    };
    queue(QueuePriority::Background, "background ");
    queue(QueuePriority::Low, "low ");
    queue(QueuePriority::Default, "default ");
    queue(QueuePriority::High, "high ");
    release.release();
    done.wait();
    EXPECT_EQ(journal, "high default low background ");
    release.release(fill - 1);
}

TEST(DispatchAfter, QueuesOnOtherThreadsOnceTheTimeHasPassedInTheOrderOfTheTimes)
{
    const dispatch_queue_t queue = dispatch_queue_create("serial");
    std::string journal;
    std::binary_semaphore done(0);
    const auto start = clockNow();
    std::chrono::nanoseconds ranAt {};
    dispatch_after(30ms, queue, [&] {
        journal += "last ";
        ranAt = clockNow();
        done.release();
    });
    dispatch_after(10ms, queue, [&] { journal += "middle "; });
    dispatch_after(1ms, queue, [&] { journal += "first "; });
    done.acquire();
    EXPECT_EQ(journal, "first middle last ");
    EXPECT_GE(ranAt - start, 30ms);
}

TEST(DispatchOnce, RunsOnceAndNoCallerReturnsBeforeItHasRun)
{
    for (int round = 0; round < 200; ++round) {
        dispatch_once_t token { 0 };
        int runs = 0; // not guarded: the token is the guard
        std::latch together(3);
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 3; ++thread)
            threads.emplace_back([&] {
                together.arrive_and_wait();
                dispatch_once(token, [&] {
                    for (int chance = 0; chance < 100; ++chance)
                        std::this_thread::yield();
                    ++runs;
                });
                EXPECT_EQ(runs, 1);
            });
    }
}

TEST(ProcessExit, DoesNotWaitForThePoolNorCrashUnderIt)
{
    EXPECT_EXIT(
        {
            std::latch working(4);
            for (int index = 0; index < 3; ++index)
                dispatch_async(dispatch_get_global_queue(QueuePriority::Default), [&working] {
                    working.count_down();
                    while (true)
                        dispatch_async(dispatch_get_main_queue(), [] {});
                });
            dispatch_async(dispatch_queue_create("serial"), [&working] {
                working.count_down();
                std::binary_semaphore(0).acquire();
            });
            dispatch_after(1h, dispatch_get_global_queue(QueuePriority::Low), [] {});
            working.wait();
            std::exit(7);
        },
        testing::ExitedWithCode(7), "");
}

} // namespace
