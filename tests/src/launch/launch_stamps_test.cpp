#include "launch/launch_stamps.h"

#include <gtest/gtest.h>

#include <thread>

namespace appledger {

namespace {

TEST(LaunchStamps, KeepTheLastLaunchOfEach)
{
    const LaunchStamps first = LaunchStamps().with("b", 2).with("a", 1).with("c", 3);
    const LaunchStamps later = first.with("b", 7);
    EXPECT_EQ(later.size(), 3U);
    EXPECT_EQ(later.of("a"), 1);
    EXPECT_EQ(later.of("b"), 7);
    EXPECT_EQ(later.of("c"), 3);
    EXPECT_EQ(later.of("bb"), std::nullopt);
    EXPECT_EQ(later.of("d"), std::nullopt);
    EXPECT_EQ(first.of("b"), 2) << "what stood before is as it was";
}

TEST(LaunchStamps, LoseNoLaunchOfTwoThreads)
{
    constexpr int launches = 300;
    const auto launch = [](char thread) {
        for (int index = 0; index < launches; ++index)
            recordLaunch(thread + std::to_string(index), index);
    };
    std::thread other(launch, 'a');
    launch('b');
    other.join();
    const platform::ReadSection section;
    EXPECT_EQ(gLastTransitionStamps.load()->size(), 2U * launches);
}

} // namespace

} // namespace appledger
