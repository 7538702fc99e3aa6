#include "core/policy_caches.h"

#include "core/preference_domain.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/run_loop.h"
#include "platform/runtime/message.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>

#include <utility>

namespace appledger {

using namespace platform;

namespace {

class PolicyCaches : public testing::Test {
protected:
    const support::TemporaryDevice device_;
};

struct ListCache {
    std::string_view key;
    PolicyCache& cache;
    void (*reload)();
    void (*callback)();
    bool keepsWrongTypes = true; ///< reads the value as it is; else only an array
};

const ListCache listCaches[] {
    { "ALBlockedNotifications", blockedAppsCache, reloadNotificationSettings, reloadNotificationSettings },
    { "ALMutedNotifications", mutedNotifAppsCache, reloadNotificationSettings, reloadMutedNotificationSettings },
    { "ALBlockedLaunchApps", g_blockedLaunchApps, UpdateBlockedAppsCache, BlockedAppsLaunchChangedCallback },
    { "ALBlockedUninstallApps", g_blockedUninstallApps, UpdateBlockedUninstallAppsCache,
        BlockedUninstallAppsChangedCallback },
    { "ALBlockedUpdateApps", g_blockedUpdateApps, UpdateBlockedUpdateAppsCache, BlockedUpdateAppsChangedCallback },
    { "ALAutoClearCacheApps", g_autoClearCacheApps, UpdateAutoClearCacheAppsCache, AutoClearCacheChangedCallback },
    { "ALHiddenApps", g_hiddenApps, UpdateHiddenAppsCache, UpdateHiddenAppsCache },
    { "ALRequireAuthApps", g_requireAuthApps, UpdateRequireAuthAppsCache, RequireAuthChangedCallback },
    { "ALKeepAwakeApps", g_keepAwakeApps, UpdateKeepAwakeAppsCache, KeepAwakeChangedCallback },
    { "ALImmortalForegroundApps", g_ImmortalForegroundApps, UpdateImmortalizerCache, UpdateImmortalizerCache, false },
    { "ALImmortalLockedApps", g_ImmortalLockedApps, UpdateImmortalizerCache, UpdateImmortalizerCache, false },
    { "ALImmortalNotifApps", g_ImmortalNotifApps, UpdateImmortalizerCache, UpdateImmortalizerCache, false },
};

TEST_F(PolicyCaches, ListNothingBeforeTheirFirstReload)
{
    device_.writeDomain({ { "ALHiddenApps", array({ "a" }) } });
    for (const ListCache& row : listCaches)
        EXPECT_FALSE(row.cache.value()) << row.key;
    EXPECT_FALSE(g_customBadgesCache.value());
    EXPECT_FALSE(g_RunningIndicatorColorHex.load());
}

TEST_F(PolicyCaches, FollowTheirOwnKeyAndNoOther)
{
    for (const ListCache& row : listCaches) {
        device_.writeDomain({ { row.key, array({ "b", "a" }) }, { "ALUnknown", array({ "c" }) } });
        for (const ListCache& other : listCaches)
            other.reload();
        for (const ListCache& other : listCaches)
            EXPECT_EQ(describe(other.cache.value()), &other == &row ? R"(["b", "a"])" : "[]")
                << other.key << " when the domain holds " << row.key;
        device_.writeDomain({});
        row.callback();
        EXPECT_EQ(describe(row.cache.value()), "[]") << row.key;
    }
}

TEST_F(PolicyCaches, KeepAValueOfTheWrongTypeAndListNothing)
{
    for (const ListCache& row : listCaches)
        for (const id& value : { string("a"), number(1), boolean(true), dictionary({ { "a", string("a") } }) }) {
            device_.writeDomain({ { row.key, value } });
            row.callback();
            EXPECT_EQ(describe(row.cache.value()), row.keepsWrongTypes ? describe(value) : "[]") << row.key;
            EXPECT_FALSE(row.cache.contains("a")) << row.key;
            EXPECT_EQ(row.cache.read().list().size(), 0U) << row.key;
        }
}

TEST_F(PolicyCaches, TakeADamagedFileForAnEmptyOne)
{
    const id whole = dictionary({ { "ALHiddenApps", array({ "a" }) }, { "ALCustomBadges", dictionary({}) } });
    const std::string xml = dataFromPropertyList(whole, PropertyListFormat::Xml).value();
    const std::string binary = dataFromPropertyList(whole, PropertyListFormat::Binary).value();
    const struct {
        const char* what;
        std::string content;
        bool isWhole = false;
    } cases[] = {
        { "XML", xml, true },
        { "nothing", "" },
        { "binary", binary, true },
        { "XML cut in half", xml.substr(0, xml.size() / 2) },
        { "XML again", xml, true },
        { "binary without its end", binary.substr(0, binary.size() - 7) },
        { "binary cut in half", binary.substr(0, binary.size() / 2) },
        { "no property list", "ALHiddenApps = a" },
        { "a root of another type", dataFromPropertyList(array({ "a" }), PropertyListFormat::Xml).value() },
    };
    for (const auto& [what, content, isWhole] : cases) {
        std::filesystem::remove(device_.at(device_.domainFile));
        device_.put(device_.domainFile, content);
        UpdateHiddenAppsCache();
        UpdateCustomBadgesCache();
        EXPECT_EQ(describe(g_hiddenApps.value()), isWhole ? R"(["a"])" : "[]") << what;
        EXPECT_EQ(describe(g_customBadgesCache.value()), isWhole ? "{}" : "nil") << what;
    }
}

TEST_F(PolicyCaches, TakeTheImmortalizersFlagsForOnUnlessTheyAreOff)
{
    const struct {
        std::string_view key;
        std::atomic<bool>& flag;
    } flags[] = {
        { "ALImmortalEnabled", g_ImmortalEnabled },
        { "ALImmortalIndicatorEnabled", g_ImmortalIndicatorEnabled },
        { "ALImmortalToastEnabled", g_ImmortalToastEnabled },
        { "ALImmortalLockIndicatorEnabled", g_ImmortalLockIndicatorEnabled },
    };
    const std::pair<id, bool> values[] = { { boolean(false), false }, { nil, true }, { boolean(true), true },
        { number(0), false }, { string("NO"), false }, { string("yes"), true }, { emptyArray(), false } };
    for (const auto& [key, flag] : flags)
        EXPECT_FALSE(flag) << key << " before the first reload";
    for (const auto& [key, flag] : flags)
        for (const auto& [value, expected] : values) {
            device_.writeDomain({});
            if (value)
                device_.writeDomain({ { key, value } });
            UpdateImmortalizerCache();
            for (const auto& other : flags)
                EXPECT_EQ(other.flag, &other.flag == &flag ? expected : true) << key << ' ' << describe(value);
        }
}

TEST_F(PolicyCaches, ReadTheFlagsAndTablesThatAreOffWhenAbsent)
{
    const auto state = [] {
        UpdateAutoClearCacheAppsCache();
        UpdateCustomBadgesCache();
        UpdateRunningIndicatorCache();
        return std::string(g_globalAutoClearCache ? "clears " : "- ")
            .append(g_RunningIndicatorEnabled ? "indicates " : "- ")
            .append(*g_RunningIndicatorColorHex.load())
            .append(" ")
            .append(describe(g_customBadgesCache.value()));
    };
    EXPECT_EQ(state(), "- - #AF52DE nil");
    device_.writeDomain({ { "GlobalAutoClearCacheEnabled", boolean(true) } });
    EXPECT_EQ(state(), "clears - #AF52DE nil");
    device_.writeDomain({ { "RunningIndicatorEnabled", boolean(true) }, { "RunningIndicatorColor", string("#fff") },
        { "ALCustomBadges", dictionary({ { "a", number(3) } }) } });
    EXPECT_EQ(state(), R"(- indicates #fff {"a": 3})");
    device_.writeDomain({ { "GlobalAutoClearCacheEnabled", string("on") }, { "RunningIndicatorEnabled", emptyArray() },
        { "RunningIndicatorColor", array({ "#fff" }) }, { "ALCustomBadges", array({ "a" }) } });
    EXPECT_EQ(state(), "- - #AF52DE nil") << "of other types";
    device_.writeDomain({ { "RunningIndicatorColor", string("") } });
    EXPECT_EQ(state(), "- -  nil") << "an empty color is a color";
}

int refreshes = 0;

TEST_F(PolicyCaches, TellEveryProcessOfTheRunningIndicator)
{
    CFNotificationCenterAddObserver(
        [] { ++refreshes; }, "com.appledger.forcerefresh", CFNotificationSuspensionBehavior::DeliverImmediately);
    device_.writeDomain({ { "RunningIndicatorEnabled", boolean(true) } });
    RunningIndicatorChangedCallback();
    EXPECT_TRUE(g_RunningIndicatorEnabled);
    runUntilIdle();
    EXPECT_EQ(refreshes, 1);
    UpdateRunningIndicatorCache();
    runUntilIdle();
    EXPECT_EQ(refreshes, 1) << "a reload alone tells nobody";
}

TEST_F(PolicyCaches, LeaveTheBlockedNotificationsAloneWhenTheMutedOnesChange)
{
    device_.writeDomain({ { "ALBlockedNotifications", array({ "a" }) }, { "ALMutedNotifications", array({ "b" }) } });
    reloadMutedNotificationSettings();
    EXPECT_EQ(describe(mutedNotifAppsCache.value()), R"(["b"])");
    EXPECT_FALSE(blockedAppsCache.value());
}

TEST_F(PolicyCaches, TakeTheBlockedUpdatesFromTheFileBeforeTheSuite)
{
    const id file = dictionary({ { "ALBlockedUpdateApps", array({ "file" }) } });
    const id rootless = dictionary({ { "ALBlockedUpdateApps", array({ "rootless" }) } });
    const id suite = dictionary({ { "ALBlockedUpdateApps", array({ "suite" }) } });
    const id other = dictionary({ { "ALHiddenApps", array({ "a" }) } });
    const struct {
        const char* what;
        id plainFile;
        id rootlessFile;
        id suiteDefaults;
        std::string expected;
    } cases[] = {
        { "nothing anywhere", nil, nil, dictionary({}), "[]" },
        { "the suite alone", nil, nil, suite, R"(["suite"])" },
        { "a file without the key", other, nil, suite, R"(["suite"])" },
        { "a file with the key", file, nil, suite, R"(["file"])" },
        { "the rootless file first", file, rootless, suite, R"(["rootless"])" },
        { "a rootless file without the key", nil, other, suite, R"(["suite"])" },
        { "a rootless file that isn't a dictionary", nil, array({ "x" }), suite, R"(["suite"])" },
        { "the suite is the plain file", file, other, suite, R"(["file"])" },
        { "a value of another type", dictionary({ { "ALBlockedUpdateApps", number(1) } }), nil, suite, "1" },
    };
    for (const auto& [what, plainFile, rootlessFile, suiteDefaults, expected] : cases) {
        std::filesystem::remove(device_.at(preferenceFile));
        std::filesystem::remove(device_.at(rootlessPreferenceFile));
        if (plainFile)
            device_.write(preferenceFile, plainFile);
        if (rootlessFile)
            device_.write(rootlessPreferenceFile, rootlessFile);
        preferences()->registerDefaults(suiteDefaults);
        UpdateBlockedUpdateAppsCache();
        EXPECT_EQ(describe(g_blockedUpdateApps.value()), expected) << what;
    }
}

TEST_F(PolicyCaches, GiveTheStoreItsBlockedUpdatesFreshFromTheDomain)
{
    const std::pair<id, std::string> cases[]
        = { { nil, "[]" }, { array({ "b", "a" }), R"(["b", "a"])" }, { string("a"), "[]" },
              { dictionary({ { "a", number(1) } }), "[]" }, { array({ number(1), string("a") }), R"([1, "a"])" } };
    for (const auto& [value, expected] : cases) {
        device_.writeDomain({});
        if (value)
            device_.writeDomain({ { "ALBlockedUpdateApps", value } });
        const id blocked = ALGetBlockedUpdateApps();
        EXPECT_EQ(describe(blocked), expected);
        send<"addObject:", void>(blocked, string("mine"));
        EXPECT_EQ(describe(ALGetBlockedUpdateApps()), expected) << "the array is the caller's own";
    }
    EXPECT_FALSE(g_blockedUpdateApps.value());
}

} // namespace

} // namespace appledger
