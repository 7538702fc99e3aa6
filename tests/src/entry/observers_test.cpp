#include "entry/observers.h"

#include "core/policy_caches.h"
#include "launch/redirect_rules.h"
#include "state/app_brightness_manager.h"
#include "support/phone_fixture.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;
using support::Phone;

namespace {

int redirectVersion()
{
    const RuleSet* const rules = gForbiddenLaunchSources.load();
    return rules && rules->contains("2") ? 2 : 1;
}

/// A domain in which every value says which version it is.
void writeVersion(const support::TemporaryDevice& device, int version)
{
    const std::string text = std::to_string(version);
    const id list = array({ std::string_view(text) });
    device.writeDomain({ { "ALBlockedNotifications", list }, { "ALMutedNotifications", list },
        { "ALBlockedLaunchApps", list }, { "ALBlockedUninstallApps", list }, { "ALBlockedUpdateApps", list },
        { "ALAutoClearCacheApps", list }, { "GlobalAutoClearCacheEnabled", boolean(version == 2) },
        { "ALHiddenApps", list }, { "ALRequireAuthApps", list }, { "ALKeepAwakeApps", list },
        { "ALCustomBadges", dictionary({ { "2", number(version) } }) }, { "RunningIndicatorColor", string(text) },
        { "ALImmortalNotifApps", list }, { "IsBlockedFromLaunchingOthers/" + text, boolean(true) } });
    device.write(
        "/var/mobile/Library/Preferences/com.orbelix.appbrightness.plist", dictionary({ { "a", real(version) } }));
}

/// The values in this process that are of the second version.
std::string changed()
{
    const struct {
        const char* name;
        const PolicyCache& cache;
    } lists[] = {
        { "blocked notifications", blockedAppsCache },
        { "muted notifications", mutedNotifAppsCache },
        { "launch", g_blockedLaunchApps },
        { "uninstall", g_blockedUninstallApps },
        { "update", g_blockedUpdateApps },
        { "autoclear", g_autoClearCacheApps },
        { "hidden", g_hiddenApps },
        { "requireauth", g_requireAuthApps },
        { "keepawake", g_keepAwakeApps },
        { "immortal", g_ImmortalNotifApps },
    };
    std::string names;
    const auto note = [&names](std::string_view name, bool isSecond) {
        if (isSecond)
            names.append(names.empty() ? "" : ", ").append(name);
    };
    for (const auto& [name, cache] : lists)
        note(name, cache.contains("2"));
    note("global autoclear", g_globalAutoClearCache);
    note("badges", describe(g_customBadgesCache.value()) == R"({"2": 2})");
    note("indicator", *g_RunningIndicatorColorHex.load() == "2");
    note("redirects", redirectVersion() == 2);
    note("brightness", AppBrightnessManager::sharedManager().levelFor("a") == 2.0);
    return names;
}

TEST(Observers, RereadWhatTheirNotificationIsAboutAndNothingElse)
{
    Phone phone("SpringBoard", "16.0");
    writeVersion(phone.device, 1);
    phone.inject().start();
    EXPECT_EQ(changed(), "");
    const struct {
        std::string name;
        std::string changed;
    } cases[] = {
        { "com.orbelix.appledger.update_blocked_changed", "update" },
        { "com.orbelix.appledger.keepawake_changed", "keepawake" },
        { "com.orbelix.appledger.notifications_changed", "blocked notifications, muted notifications" },
        { "com.orbelix.appledger.notifications_muted_changed", "muted notifications" },
        { "com.orbelix.appledger.launch_blocked_changed", "launch" },
        { "com.orbelix.appledger.uninstall_blocked_changed", "uninstall" },
        { "com.orbelix.appledger.autoclear_changed", "autoclear, global autoclear" },
        { "com.orbelix.appledger.hidden_changed", "hidden" },
        { "com.orbelix.appledger.badge_changed", "badges" },
        { "com.orbelix.appledger.requireauth_changed", "requireauth" },
        { "com.orbelix.appledger.brightness_changed", "brightness" },
        { "com.merrowlane.appledger.runningindicator-changed", "indicator" },
        { "com.orbelix.appledger.redirect_saved", "redirects" },
        { "com.orbelix.appledger.immortalizer_changed", "immortal" },
        { "com.orbelix.appledger.icon_changed", "" },
        { "com.appledger.forcerefresh", "" },
        { "com.appledger.clearcache", "" },
    };
    for (const auto& [name, expected] : cases) {
        writeVersion(phone.device, 2);
        CFNotificationCenterPostNotification(name);
        EXPECT_EQ(changed(), "") << name << ": not in the post";
        runUntilIdle();
        EXPECT_EQ(changed(), expected) << name;
        writeVersion(phone.device, 1);
        for (const auto& other : cases)
            CFNotificationCenterPostNotification(other.name);
        runUntilIdle();
        ASSERT_EQ(changed(), "") << name;
    }
}

TEST(Observers, AreAddedOnceForImmediateDeliveryByTheRoleOfTheProcess)
{
    Phone phone("SpringBoard", "16.0");
    phone.inject();
    const auto added = darwinObservers();
    ASSERT_EQ(added.size(), 16U);
    for (std::size_t index = 0; index < added.size(); ++index) {
        EXPECT_EQ(added[index].name, observers()[index].notification);
        EXPECT_EQ(added[index].callback, observers()[index].callback);
        EXPECT_EQ(added[index].suspensionBehavior, CFNotificationSuspensionBehavior::DeliverImmediately);
    }
}

TEST(Observers, OfSpotlightAreThoseOfEveryProcess)
{
    Phone phone("Spotlight", "16.0");
    phone.inject();
    std::string names;
    for (const DarwinObserver& observer : darwinObservers())
        names += observer.name + " ";
    EXPECT_EQ(names, "com.appledger.forcerefresh com.appledger.clearcache ");
}

} // namespace

} // namespace appledger
