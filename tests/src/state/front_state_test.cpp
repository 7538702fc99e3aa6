#include "state/front_state.h"

#include <gtest/gtest.h>

#include <tuple>

namespace appledger {

namespace {

enum class Event { Front, Leave };

TEST(MuteState, FollowsItsTable)
{
    const struct {
        const char* what;
        MuteState before;
        Event event;
        const char* application;
        bool listed;
        VolumeChange change;
        MuteState after;
    } cases[] {
        { "not muted, listed", { "", false }, Event::Front, "a", true, VolumeChange::Mute, { "a", true } },
        { "not muted, not listed", { "b", false }, Event::Front, "a", false, VolumeChange::None, { "a", false } },
        { "not muted, leaves", { "a", false }, Event::Leave, "a", true, VolumeChange::None, { "a", false } },
        { "muted, listed", { "a", true }, Event::Front, "b", true, VolumeChange::None, { "b", true } },
        { "muted, again", { "a", true }, Event::Front, "a", true, VolumeChange::None, { "a", true } },
        { "muted, not listed", { "a", true }, Event::Front, "b", false, VolumeChange::Restore, { "b", false } },
        { "muted, unlisted meanwhile", { "a", true }, Event::Front, "a", false, VolumeChange::Restore, { "a", false } },
        { "muted, leaves", { "a", true }, Event::Leave, "a", true, VolumeChange::Restore, { "", false } },
        { "muted, another leaves", { "b", true }, Event::Leave, "a", true, VolumeChange::None, { "b", true } },
    };
    for (const auto& each : cases) {
        MuteState state = each.before;
        const VolumeChange change = each.event == Event::Front ? comeToFront(state, each.application, each.listed)
                                                               : leaveFront(state, each.application);
        EXPECT_EQ(change, each.change) << each.what;
        EXPECT_EQ(std::tie(state.lastFrontmostBundleID, state.isCurrentlyMuted),
            std::tie(each.after.lastFrontmostBundleID, each.after.isCurrentlyMuted))
            << each.what;
    }
}

TEST(BrightnessState, FollowsItsTable)
{
    constexpr double present = 0.6;
    using Level = std::optional<double>;
    const struct {
        const char* what;
        BrightnessState before;
        Event event;
        const char* application;
        Level level;
        Level set;
        BrightnessState after;
    } cases[] {
        { "a level", { "", -1, false }, Event::Front, "a", 0.3, 0.3, { "a", present, true } },
        { "level 0 counts", { "", -1, false }, Event::Front, "a", 0.0, 0.0, { "a", present, true } },
        { "none", { "b", -1, false }, Event::Front, "a", {}, {}, { "a", -1, false } },
        { "a negative one is none", { "b", -1, false }, Event::Front, "a", -0.5, {}, { "a", -1, false } },
        { "from level to level", { "a", 0.5, true }, Event::Front, "b", 0.9, 0.9, { "b", 0.5, true } },
        { "to one without", { "a", 0.5, true }, Event::Front, "b", {}, 0.5, { "b", -1, false } },
        { "back to black", { "a", 0.0, true }, Event::Front, "b", {}, 0.0, { "b", -1, false } },
        { "nowhere to go back to", { "a", -1, true }, Event::Front, "b", {}, {}, { "b", -1, true } },
        { "leaves", { "a", 0.5, true }, Event::Leave, "a", 0.3, 0.5, { "", -1, false } },
        { "leaves, nowhere to go back to", { "a", -1, true }, Event::Leave, "a", 0.3, {}, { "", -1, false } },
        { "another leaves", { "b", 0.5, true }, Event::Leave, "a", 0.3, {}, { "b", 0.5, true } },
        { "leaves, unchanged", { "a", -1, false }, Event::Leave, "a", {}, {}, { "a", -1, false } },
    };
    for (const auto& each : cases) {
        BrightnessState state = each.before;
        const Level set = each.event == Event::Front ? comeToFront(state, each.application, each.level, present)
                                                     : leaveFront(state, each.application);
        EXPECT_EQ(set, each.set) << each.what;
        EXPECT_EQ(std::tie(state.lastFrontmostBundleID, state.originalBrightness, state.isBrightnessModified),
            std::tie(each.after.lastFrontmostBundleID, each.after.originalBrightness, each.after.isBrightnessModified))
            << each.what;
    }
}

} // namespace

} // namespace appledger
