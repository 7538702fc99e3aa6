#include "core/policies.h"

#include "platform/darwin/notify.h"
#include "platform/dispatch/run_loop.h"
#include "platform/runtime/message.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace appledger {

using namespace platform;

namespace {

class Policies : public testing::Test {
protected:
    const support::TemporaryDevice device_;
};

/// The keys whose value is a list that the process keeps.
std::vector<PreferenceKey> cachedLists()
{
    std::vector<PreferenceKey> lists;
    std::ranges::copy_if(preferenceTable, std::back_inserter(lists),
        [](const PreferenceKey& key) { return key.type == PreferenceType::IdentifierList && key.cache.value; });
    return lists;
}

TEST_F(Policies, ListNothingBeforeTheirFirstReload)
{
    device_.writeDomain({ { "ALHiddenApps", array({ "a" }) } });
    ASSERT_FALSE(cachedLists().empty());
    for (const PreferenceKey& key : cachedLists())
        EXPECT_FALSE(key.cache.value->value()) << key.name;
    EXPECT_FALSE(g_customBadgesCache.value());
    EXPECT_FALSE(g_RunningIndicatorColorHex.load());
}

TEST_F(Policies, FollowTheirOwnKeyAndNoOther)
{
    for (const PreferenceKey& key : cachedLists()) {
        device_.writeDomain({ { key.name, array({ "b", "a" }) }, { "ALUnknown", array({ "c" }) } });
        for (const PreferenceKey& other : cachedLists())
            reload(*other.policy);
        for (const PreferenceKey& other : cachedLists())
            EXPECT_EQ(describe(other.cache.value->value()), other.name == key.name ? R"(["b", "a"])" : "[]")
                << other.name << " when the domain holds " << key.name;
        device_.writeDomain({});
        reload(*key.policy);
        EXPECT_EQ(describe(key.cache.value->value()), "[]") << key.name;
    }
}

TEST_F(Policies, KeepAListOfTheWrongTypeAndListNothing)
{
    for (const PreferenceKey& key : cachedLists())
        for (const id& value : { string("a"), number(1), boolean(true), dictionary({ { "a", string("a") } }) }) {
            device_.writeDomain({ { key.name, value } });
            reload(*key.policy);
            EXPECT_EQ(describe(key.cache.value->value()), describe(value)) << key.name;
            EXPECT_FALSE(key.cache.value->contains("a")) << key.name;
            EXPECT_EQ(key.cache.value->read().list().size(), 0U) << key.name;
        }
}

TEST_F(Policies, TakeADamagedFileForAnEmptyOne)
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
        reload(policy::hidden);
        reload(policy::customBadges);
        EXPECT_EQ(describe(g_hiddenApps.value()), isWhole ? R"(["a"])" : "[]") << what;
        EXPECT_EQ(describe(g_customBadgesCache.value()), isWhole ? "{}" : "nil") << what;
    }
}

TEST_F(Policies, TakeTheImmortalizersFlagsForOnUnlessTheyAreOff)
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
            reload(policy::immortalizer);
            for (const auto& other : flags)
                EXPECT_EQ(other.flag, &other.flag == &flag ? expected : true) << key << ' ' << describe(value);
        }
}

TEST_F(Policies, ReadTheFlagsAndTablesThatAreOffWhenAbsent)
{
    const auto state = [] {
        reload(policy::autoClear);
        reload(policy::customBadges);
        reload(policy::runningIndicator);
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

TEST_F(Policies, TellEveryProcessOfTheRunningIndicator)
{
    CFNotificationCenterAddObserver(
        [] { ++refreshes; }, "com.appledger.forcerefresh", CFNotificationSuspensionBehavior::DeliverImmediately);
    device_.writeDomain({ { "RunningIndicatorEnabled", boolean(true) } });
    RunningIndicatorChangedCallback();
    EXPECT_TRUE(g_RunningIndicatorEnabled);
    runUntilIdle();
    EXPECT_EQ(refreshes, 1);
    reload(policy::runningIndicator);
    runUntilIdle();
    EXPECT_EQ(refreshes, 1) << "a reload alone tells nobody";
}

TEST_F(Policies, LeaveTheBlockedNotificationsAloneWhenTheMutedOnesChange)
{
    device_.writeDomain({ { "ALBlockedNotifications", array({ "a" }) }, { "ALMutedNotifications", array({ "b" }) } });
    reload(policy::mutedNotifications);
    EXPECT_EQ(describe(mutedNotifAppsCache.value()), R"(["b"])");
    EXPECT_FALSE(blockedAppsCache.value());
}

TEST_F(Policies, TakeTheBlockedUpdatesFromTheFileBeforeTheSuite)
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
        preferences()->synchronize(); // what the last case left unwritten
        std::filesystem::remove(device_.at(preferenceFile));
        std::filesystem::remove(device_.at(rootlessPreferenceFile));
        if (plainFile)
            device_.write(preferenceFile, plainFile);
        if (rootlessFile)
            device_.write(rootlessPreferenceFile, rootlessFile);
        if (!pairsOf(plainFile)["ALBlockedUpdateApps"]) // else that is the suite's
            preferences()->setObject(pairsOf(suiteDefaults)["ALBlockedUpdateApps"], "ALBlockedUpdateApps");
        reload(policy::blockedUpdate);
        EXPECT_EQ(describe(g_blockedUpdateApps.value()), expected) << what;
    }
}

TEST_F(Policies, GiveTheStoreItsBlockedUpdatesFreshFromTheDomain)
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
