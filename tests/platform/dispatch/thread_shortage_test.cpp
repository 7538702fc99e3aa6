#include "platform/dispatch/queue.h"
#include "platform/dispatch/run_loop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <dlfcn.h>
#include <latch>
#include <pthread.h>
#include <semaphore>
#include <string>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

std::atomic<bool> isShort = false;
std::atomic<int> refusals = 0;

} // namespace

/// The system's own, as long as there is no shortage.
extern "C" int pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument) noexcept
{
    if (isShort) {
        ++refusals;
        return EAGAIN;
    }
    static const auto create = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    return create(thread, attributes, start, argument);
}

namespace {

std::string blockedSignals()
{
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    std::string text;
    for (int signal = 1; signal < NSIG; ++signal)
        if (sigismember(&mask, signal) == 1)
            text += std::to_string(signal) + " ";
    return text;
}

TEST(ThreadShortage, LeavesTheCallerAsItWasAndTheWorkWaits)
{
    const std::string before = blockedSignals();
    std::atomic<int> ran = 0;
    const auto work = [&ran] { ++ran; };
    const dispatch_queue_t serial = dispatch_queue_create("serial");
    isShort = true;
    for (const QueuePriority priority : { QueuePriority::High, QueuePriority::Default, QueuePriority::Background })
        dispatch_async(dispatch_get_global_queue(priority), work);
    dispatch_async(serial, work);
    dispatch_after(1ms, serial, work);
    EXPECT_GE(refusals, 2) << "threads of the pool, and the timer's";
    EXPECT_EQ(blockedSignals(), before);
    EXPECT_EQ(ran, 0);
    const int refusalsBefore = refusals;
    EXPECT_TRUE(runUntil([&] { return refusals > refusalsBefore; }, 10s)) << "it is tried again";
    isShort = false;
    EXPECT_TRUE(runUntil([&] { return ran == 5; }, 10s)) << ran;
}

TEST(ThreadShortage, CostsNoThreadOnceItIsOver)
{
    // Each waits for all the others.
    static std::latch together(8);
    std::atomic<int> met = 0;
    isShort = true;
    for (int index = 0; index < 8; ++index)
        dispatch_async(dispatch_get_global_queue(QueuePriority::Default), [&met] {
            together.arrive_and_wait();
            ++met;
        });
    isShort = false;
    EXPECT_TRUE(runUntil([&] { return met == 8; }, 10s)) << "fewer threads than there would have been";
}

TEST(GlobalQueue, WhatIsUrgentDoesNotWaitForLongWorkThatIsLess)
{
    static std::counting_semaphore<> release(0);
    std::atomic<int> ended = 0;
    int taken = 0;
    const std::vector<QueuePriority> fromTheLeast { QueuePriority::Background, QueuePriority::Low,
        QueuePriority::Default };
    for (const QueuePriority busy : fromTheLeast) {
        for (int index = 0; index < 20; ++index, ++taken)
            dispatch_async(dispatch_get_global_queue(busy), [&ended] {
                release.acquire();
                ++ended;
            });
        std::atomic<int> ran = 0;
        for (int index = 0; index < 20; ++index)
            dispatch_async(dispatch_get_global_queue(QueuePriority::High), [&ran] { ++ran; });
        EXPECT_TRUE(runUntil([&] { return ran == 20; }, 10s)) << static_cast<long>(busy) << ": " << ran;
    }
    EXPECT_EQ(ended, 0);
    release.release(taken);
    EXPECT_TRUE(runUntil([&] { return ended == taken; }, 10s)) << "nothing is left behind: " << ended;
}

} // namespace
