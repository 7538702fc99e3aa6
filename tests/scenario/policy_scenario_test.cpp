#include "scenario/command.h"

#include <gtest/gtest.h>
#include <set>

/// `appledger policy` and `appledger plan`.

namespace scenario {

TEST(PolicyScenario, EveryKindOfKeyIsWrittenAndReadBack)
{
    struct Case {
        std::vector<std::string> words;
        std::string key;
        Json value;
        Json notification;
    };
    const std::string posted = "com.orbelix.appledger.";
    const Case cases[] {
        { { "add", "ALMutedNotifications", "a" }, "ALMutedNotifications", { "a" },
            posted + "notifications_muted_changed" },
        { { "toggle", "ALMutedNotifications", "b" }, "ALMutedNotifications", { "a", "b" },
            posted + "notifications_muted_changed" },
        { { "toggle", "ALMutedNotifications", "a" }, "ALMutedNotifications", { "b" },
            posted + "notifications_muted_changed" },
        { { "remove", "ALMutedNotifications", "none" }, "ALMutedNotifications", { "b" },
            posted + "notifications_muted_changed" },
        { { "add", "ALMutedNotifications", "b" }, "ALMutedNotifications", { "b" },
            posted + "notifications_muted_changed" },
        { { "set", "ALKeepAwakeApps", "a,b" }, "ALKeepAwakeApps", { "a", "b" }, posted + "keepawake_changed" },
        { { "set", "ALKeepAwakeApps", R"(["c,d"])" }, "ALKeepAwakeApps", { "c,d" }, posted + "keepawake_changed" },
        { { "set", "ALImmortalEnabled", "off" }, "ALImmortalEnabled", false, posted + "immortalizer_changed" },
        { { "set", "ALCustomBadges", R"({"a":3})" }, "ALCustomBadges", { { "a", 3 } }, posted + "badge_changed" },
        { { "set", "CustomAppNames", R"({"a":"A"})" }, "CustomAppNames", { { "a", "A" } }, nullptr },
        { { "set", "kAppearance", "2" }, "kAppearance", 2, nullptr },
        { { "set", "RunningIndicatorColor", "#112233" }, "RunningIndicatorColor", "#112233",
            "com.merrowlane.appledger.runningindicator-changed" },
        { { "set", "ShouldSimulateSuccess/a", "true" }, "ShouldSimulateSuccess/a", true, posted + "redirect_saved" },
        { { "toggle", "ShouldSimulateSuccess", "a" }, "ShouldSimulateSuccess/a", false, posted + "redirect_saved" },
        { { "add", "CustomBypassedApplications/a", "b" }, "CustomBypassedApplications/a", { "b" },
            posted + "redirect_saved" },
        { { "unset", "ALImmortalEnabled" }, "ALImmortalEnabled", nullptr, posted + "immortalizer_changed" },
    };
    const Phone phone; // not up: policies work all the same
    for (const Case& expected : cases) {
        std::vector<std::string> words { "policy" };
        words.insert(words.end(), expected.words.begin(), expected.words.end());
        const Json answer = phone.answer(words);
        EXPECT_EQ(answer["key"], expected.key);
        EXPECT_EQ(answer["value"], expected.value) << expected.key;
        EXPECT_EQ(answer["notification"], expected.notification) << expected.key;
        EXPECT_EQ(answer["posted"], false);
        const Json all = phone.answer({ "policy", "list" })["policies"];
        EXPECT_EQ(all.value(expected.key, Json(nullptr)), expected.value);
    }
}

TEST(PolicyScenario, UnknownKeysAndMistypedValuesAreRefusedWithWhatIsKnown)
{
    const Phone phone;
    const std::pair<std::vector<std::string>, std::string> cases[] {
        { { "set", "ALNothing", "1" }, "ALBlockedLaunchApps" },
        { { "add", "ALNothing", "a" }, "CustomBlockedApplications/<bundle identifier>" },
        { { "unset", "ALNothing" }, "RunningIndicatorColor" },
        { { "set", "kAppearance", "dark" }, "0 (dark), 1 (light) or 2" },
        { { "set", "kAppearance", "3" }, "0 (dark), 1 (light) or 2" },
        { { "set", "DirectoryOpener", "other" }, "filza or fila" },
        { { "set", "RunningIndicatorColor", "blue" }, "#RRGGBB" },
        { { "set", "ALImmortalEnabled", "perhaps" }, "true or false" },
        { { "set", "ALCustomBadges", R"({"a":"3"})" }, "to numbers" },
        { { "set", "CustomAppNames", R"(["a"])" }, "to texts" },
        { { "set", "ALHiddenApps", "[1]" }, "bundle identifiers" },
        { { "add", "ALImmortalEnabled", "a" }, "true or false" },
        { { "set", "ShouldSimulateSuccess", "true" }, "bundle identifier" },
        { { "add", "CustomBlockedApplications", "a" }, "bundle identifier" },
    };
    for (const auto& [words, known] : cases) {
        std::vector<std::string> all { "policy" };
        all.insert(all.end(), words.begin(), words.end());
        const Outcome outcome = phone.run(all);
        EXPECT_EQ(outcome.status, 2) << words[1];
        EXPECT_NE(outcome.errors.find(known), std::string::npos) << outcome.errors;
    }
    bool isListed = false;
    const Json listed = phone.answer({ "policy", "keys" });
    for (const Json& key : listed["keys"])
        isListed = isListed
            || (key["key"] == "DirectoryOpener" && key["values"] == "filza or fila" && key["default"] == "filza");
    EXPECT_TRUE(isListed) << listed;
    EXPECT_EQ(phone.answer({ "policy", "list" })["policies"], Json::object());
}

TEST(PlanScenario, TheCommandPrintsTheLoadOfTheProcessThatItIsAskedFor)
{
    const Phone phone;
    const auto plan = [&](const std::string& bundle, const std::string& process, const std::string& version) {
        return phone.answer({ "plan", "--bundle", bundle, "--process", process, "--ios", version })["steps"];
    };
    const auto groups = [](const Json& steps) {
        std::string names;
        for (const Json& step : steps)
            if (step["step"] == "install group")
                names += step["name"].get<std::string>() + " ";
        return names;
    };
    const std::string springBoard
        = "AppStoreUpdateHooks BaseHooks SHARED_HOOKS IOS13_AND_NEWER_HOOKS IOS12_AND_OLDER_HOOKS "
          "BlockLaunchHooks NoRedirectPrimary AutoClearHooks ImmortalizerHooks HiddenAppHooks "
          "AppMuteHooks RunningIndicatorHooks GlobalIconHooks SearchUIHooks ";
    EXPECT_EQ(groups(plan("com.apple.springboard", "SpringBoard", "16.0")), springBoard + "NotificationHooks_iOS15 ");
    EXPECT_EQ(groups(plan("com.apple.springboard", "SpringBoard", "14.0")), springBoard);
    EXPECT_EQ(
        groups(plan("com.apple.Spotlight", "Spotlight", "16.0")), "SpotlightHooks GlobalIconHooks SearchUIHooks ");
    EXPECT_EQ(groups(plan("com.apple.appstored", "appstored", "16.0")), "AppStoreUpdateHooks ");
    EXPECT_EQ(groups(plan("com.example.notes", "Notes", "16.0")), "GlobalIconHooks ");

    const Json absent = phone.answer({ "plan", "--bundle", "com.apple.springboard", "--process", "SpringBoard",
        "--absent", "SBIconView", "--absent", "NCNotificationRequestContentProvider" })["steps"];
    EXPECT_EQ(groups(absent), springBoard);
    // SpringBoard has the store's classes, but none of its views, and no search results; and what older versions called
    // a badge and a web clip's icon is gone.
    const std::set<std::string> missing { "SBIconView", "SKUIItemStateCenter", "SearchUIAppIconImage",
        "SearchUIImageView", "SBBookmarkIcon", "badgeNumberOrString", "setBadgeNumberOrString:" };
    for (const Json& step : absent)
        for (const Json& row : step.value("rows", Json::array()))
            EXPECT_EQ(row["targetExists"], !missing.contains(row["class"]) && !missing.contains(row["selector"]))
                << row.dump();
}

} // namespace scenario
