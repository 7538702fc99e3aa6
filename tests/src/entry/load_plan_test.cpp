#include "entry/load_plan.h"

#include "entry/process_role.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace appledger {

using namespace platform;

namespace {

TEST(ProcessRoles, CompareExactly)
{
    const struct {
        const char* bundleIdentifier;
        const char* processName;
        std::string role; ///< B: SpringBoard, S: Spotlight, A: App Store, a: appstored, i: itunesstored; +: store
    } cases[] = {
        { "com.apple.springboard", "SpringBoard", "B+" },
        { "com.apple.SpringBoard", "SpringBoard", "" },
        { "com.apple.Spotlight", "Spotlight", "S" },
        { "com.apple.spotlight", "Spotlight", "" },
        { "com.apple.AppStore", "AppStore", "A+" },
        { "com.apple.appstore", "AppStore", "" },
        { "com.apple.appstored", "appstored", "a+" },
        { "com.example.anything", "appstored", "a+" },
        { "", "itunesstored", "i+" },
        { "com.apple.springboard", "itunesstored", "Bi+" },
        { "com.apple.Spotlight", "appstored", "Sa+" },
        { "com.apple.appstored", "Appstored", "" },
        { "appstored", "", "" },
        { "com.apple.springboard ", "springboard", "" },
        { "com.example.notes", "Notes", "" },
    };
    for (const auto& [bundleIdentifier, processName, expected] : cases) {
        const ProcessRole role = processRole({ bundleIdentifier, processName, {} });
        std::string text;
        text.append(role.isSpringBoard ? "B" : "")
            .append(role.isSpotlight ? "S" : "")
            .append(role.isAppStore ? "A" : "");
        text.append(role.isAppstored ? "a" : "")
            .append(role.isItunesstored ? "i" : "")
            .append(role.isStore() ? "+" : "");
        EXPECT_EQ(text, expected) << bundleIdentifier << ' ' << processName;
    }
}

std::string text(const LoadStep& step)
{
    const std::string name(step.name);
    switch (step.kind) {
    case LoadStepKind::LoadCache:
        return "load " + name;
    case LoadStepKind::CreateSingleton:
        return "create " + name;
    case LoadStepKind::AddObserver:
        return "observe " + std::string(step.notification) + " " + name;
    case LoadStepKind::InstallGroup:
        return "install " + name;
    }
    return "";
}

using Lines = std::vector<std::string>;

Lines plan(const char* bundleIdentifier, const char* processName, SystemVersion version,
    const std::set<std::string, std::less<>>& classes)
{
    const LoadFacts facts { { bundleIdentifier, processName, version },
        [&](std::string_view name) { return classes.contains(name); } };
    Lines lines;
    for (const LoadStep& step : planLoad(facts))
        lines.push_back(text(step));
    return lines;
}

Lines operator+(Lines left, const Lines& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

const Lines everyProcess { "observe com.appledger.forcerefresh ALForceRefreshIconsCallback",
    "observe com.appledger.clearcache ALClearSpecificIconCache" };
const Lines store { "load UpdateBlockedUpdateAppsCache",
    "observe com.orbelix.appledger.update_blocked_changed BlockedUpdateAppsChangedCallback" };
const Lines storeHooks { "install AppStoreUpdateHooks" };
const Lines springBoard {
    "load reloadNotificationSettings",
    "load UpdateBlockedAppsCache",
    "load UpdateBlockedUninstallAppsCache",
    "load UpdateAutoClearCacheAppsCache",
    "load UpdateHiddenAppsCache",
    "load UpdateCustomBadgesCache",
    "load UpdateRequireAuthAppsCache",
    "load UpdateRunningIndicatorCache",
    "load ReloadRedirectPrefs",
    "load UpdateImmortalizerCache",
    "create AppMuteManager",
    "create AppBrightnessManager",
    "create AppIdleTimerManager",
    "observe com.orbelix.appledger.keepawake_changed KeepAwakeChangedCallback",
    "observe com.orbelix.appledger.notifications_changed reloadNotificationSettings",
    "observe com.orbelix.appledger.notifications_muted_changed reloadMutedNotificationSettings",
    "observe com.orbelix.appledger.launch_blocked_changed BlockedAppsLaunchChangedCallback",
    "observe com.orbelix.appledger.uninstall_blocked_changed BlockedUninstallAppsChangedCallback",
    "observe com.orbelix.appledger.autoclear_changed AutoClearCacheChangedCallback",
    "observe com.orbelix.appledger.hidden_changed HiddenAppsChangedCallback",
    "observe com.orbelix.appledger.badge_changed CustomBadgesChangedCallback",
    "observe com.orbelix.appledger.requireauth_changed RequireAuthChangedCallback",
    "observe com.orbelix.appledger.brightness_changed BrightnessChangedCallback",
    "observe com.merrowlane.appledger.runningindicator-changed RunningIndicatorChangedCallback",
    "observe com.orbelix.appledger.redirect_saved ReloadRedirectPrefs",
    "observe com.orbelix.appledger.immortalizer_changed ImmortalizerChangedCallback",
    "install BaseHooks",
    "install SHARED_HOOKS",
    "install IOS13_AND_NEWER_HOOKS",
    "install IOS12_AND_OLDER_HOOKS",
    "install BlockLaunchHooks",
    "install NoRedirectPrimary",
    "install AutoClearHooks",
    "install ImmortalizerHooks",
    "install HiddenAppHooks",
    "install AppMuteHooks",
    "install RunningIndicatorHooks",
};
const Lines spotlight { "load UpdateBlockedAppsCache", "load UpdateRequireAuthAppsCache", "install SpotlightHooks" };
const Lines images { "install GlobalIconHooks" };
const Lines searchUI { "install SearchUIHooks" };
const Lines notifications { "install NotificationHooks_iOS15" };

TEST(LoadPlan, OfEachProcessIsThisListOfSteps)
{
    const std::set<std::string, std::less<>> all { "ASDPurchaseRequest", "ASDJobManager", "ASDPurchaseManager",
        "SKUIItemStateCenter", "ASDApp", "UIImage", "SBIconImageView", "SearchUIAppIconImage", "SBHIconManager",
        "NCNotificationRequestContentProvider" };
    auto withoutIconManager = all;
    withoutIconManager.erase("SBHIconManager");
    const SystemVersion sixteen { 16, 0, 0 };
    const Lines whole = everyProcess + store + storeHooks + springBoard + images + searchUI;

    EXPECT_EQ(plan("com.apple.springboard", "SpringBoard", sixteen, all), whole + notifications);
    EXPECT_EQ(plan("com.apple.springboard", "SpringBoard", sixteen, withoutIconManager), whole + notifications);
    EXPECT_EQ(plan("com.apple.springboard", "SpringBoard", { 14, 0, 0 }, all), whole);
    EXPECT_EQ(plan("com.apple.springboard", "SpringBoard", sixteen, {}), everyProcess + store + springBoard);
    EXPECT_EQ(plan("com.apple.Spotlight", "Spotlight", sixteen, { "UIImage", "SearchUIAppIconImage" }),
        everyProcess + spotlight + images + searchUI);
    EXPECT_EQ(plan("com.apple.AppStore", "AppStore", sixteen, { "UIImage", "ASDPurchaseManager" }),
        everyProcess + store + storeHooks + images);
    EXPECT_EQ(plan("com.apple.AppStore", "AppStore", sixteen, { "UIImage" }), everyProcess + store + images);
    EXPECT_EQ(plan("com.apple.appstored", "appstored", sixteen, { "ASDApp" }), everyProcess + store + storeHooks);
    EXPECT_EQ(plan("com.apple.itunesstored", "itunesstored", sixteen, { "SKUIItemStateCenter" }),
        everyProcess + store + storeHooks);
    EXPECT_EQ(plan("com.example.notes", "Notes", sixteen, { "UIImage", "ASDApp" }), everyProcess + images);
    EXPECT_EQ(plan("", "", {}, {}), everyProcess);
}

TEST(LoadPlan, InstallsTheGroupsOfEveryProcessWhereTheirClassesAre)
{
    const struct {
        SystemVersion version;
        std::set<std::string, std::less<>> classes;
        Lines installed;
    } cases[] = {
        { { 15, 0, 0 }, { "NCNotificationRequestContentProvider" }, notifications },
        { { 14, 8, 1 }, { "NCNotificationRequestContentProvider" }, {} },
        { { 17, 2, 0 }, {}, {} },
        { { 15, 0, 0 }, { "SBIconImageView" }, searchUI },
        { { 15, 0, 0 }, { "SearchUIAppIconImage", "SBIconImageView" }, searchUI },
        { { 15, 0, 0 }, { "SearchUIImageView" }, {} },
    };
    for (const auto& [version, classes, installed] : cases)
        EXPECT_EQ(plan("com.example.notes", "Notes", version, classes), everyProcess + installed) << version.text();
    for (const char* const name :
        { "ASDPurchaseRequest", "ASDJobManager", "ASDPurchaseManager", "SKUIItemStateCenter", "ASDApp" })
        EXPECT_EQ(plan("", "appstored", {}, { name }), everyProcess + store + storeHooks) << name;
}

} // namespace

} // namespace appledger
