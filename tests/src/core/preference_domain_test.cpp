#include "core/preference_domain.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace appledger {

namespace {

using enum PreferenceType;

constexpr std::string_view redirect = "com.orbelix.appledger.redirect_saved";
constexpr std::string_view immortalizer = "com.orbelix.appledger.immortalizer_changed";
constexpr std::string_view indicator = "com.merrowlane.appledger.runningindicator-changed";

TEST(PreferenceDomain, HasTheseKeysWithTheirTypesAndNotifications)
{
    const struct {
        std::string_view name;
        PreferenceType type;
        std::string_view notification;
        bool isPrefix = false;
    } expected[] = {
        { "ALBlockedNotifications", IdentifierList, "com.orbelix.appledger.notifications_changed" },
        { "ALMutedNotifications", IdentifierList, "com.orbelix.appledger.notifications_muted_changed" },
        { "ALBlockedLaunchApps", IdentifierList, "com.orbelix.appledger.launch_blocked_changed" },
        { "ALBlockedUninstallApps", IdentifierList, "com.orbelix.appledger.uninstall_blocked_changed" },
        { "ALBlockedUpdateApps", IdentifierList, "com.orbelix.appledger.update_blocked_changed" },
        { "ALAutoClearCacheApps", IdentifierList, "com.orbelix.appledger.autoclear_changed" },
        { "GlobalAutoClearCacheEnabled", Boolean, "com.orbelix.appledger.autoclear_changed" },
        { "ALHiddenApps", IdentifierList, "com.orbelix.appledger.hidden_changed" },
        { "ALRequireAuthApps", IdentifierList, "com.orbelix.appledger.requireauth_changed" },
        { "ALKeepAwakeApps", IdentifierList, "com.orbelix.appledger.keepawake_changed" },
        { "ALCustomBadges", NumberTable, "com.orbelix.appledger.badge_changed" },
        { "ALRealBadges", NumberTable, "" },
        { "ALIsPanelModifying", Boolean, "" },
        { "RunningIndicatorEnabled", Boolean, indicator },
        { "RunningIndicatorColor", String, indicator },
        { "ALImmortalEnabled", Boolean, immortalizer },
        { "ALImmortalIndicatorEnabled", Boolean, immortalizer },
        { "ALImmortalToastEnabled", Boolean, immortalizer },
        { "ALImmortalLockIndicatorEnabled", Boolean, immortalizer },
        { "ALImmortalForegroundApps", IdentifierList, immortalizer },
        { "ALImmortalLockedApps", IdentifierList, immortalizer },
        { "ALImmortalNotifApps", IdentifierList, immortalizer },
        { "IsBlockedFromLaunchingOthers/", Boolean, redirect, true },
        { "IsBlockedFromBeingLaunched/", Boolean, redirect, true },
        { "IsBlockedFromLaunchingAppStore/", Boolean, redirect, true },
        { "IsBlockedFromLaunchingSafari/", Boolean, redirect, true },
        { "ShouldTeardownAutomatically/", Boolean, redirect, true },
        { "ShouldSimulateSuccess/", Boolean, redirect, true },
        { "CustomBypassedApplications/", IdentifierList, redirect, true },
        { "CustomBlockedApplications/", IdentifierList, redirect, true },
        { "ALLastModifiedIconBundleID", String, "com.appledger.clearcache" },
        { "ALLanguage", String, "" },
        { "ALOffloadModeEnabled", Boolean, "" },
        { "ALFeatureListItems", RowList, "" },
        { "ALActionBarItems", RowList, "" },
        { "CustomAppNames", StringTable, "" },
        { "SwipeUpEnabled", Boolean, "" },
        { "SwipeDownEnabled", Boolean, "" },
        { "ForceTouchMenuEnabled", Boolean, "" },
        { "HidePanelSeparatorsEnabled", Boolean, "" },
        { "kAppearance", Integer, "" },
        { "DirectoryOpener", String, "" },
    };
    ASSERT_EQ(preferenceKeys().size(), std::size(expected));
    for (std::size_t index = 0; index < std::size(expected); ++index) {
        const auto& [name, type, notification, isPrefix] = expected[index];
        const PreferenceKey& key = preferenceKeys()[index];
        EXPECT_EQ(key.name, name);
        EXPECT_EQ(key.type, type) << name;
        EXPECT_EQ(key.notification, notification) << name;
        EXPECT_EQ(key.isPrefix, isPrefix) << name;
        EXPECT_EQ(preferenceKey(name), &key);
    }
}

TEST(PreferenceDomain, FindsTheRowOfAWholeKey)
{
    const struct {
        std::string_view key;
        std::string_view row; ///< "": none
    } cases[] = {
        { "ShouldSimulateSuccess/com.example.app", "ShouldSimulateSuccess/" },
        { "ShouldSimulateSuccess", "ShouldSimulateSuccess/" },
        { "ShouldSimulateSuccessfully", "" },
        { "shouldsimulatesuccess", "" },
        { "ALHiddenApps/com.example.app", "" },
        { "ALHiddenApp", "" },
        { "", "" },
    };
    for (const auto& [key, expected] : cases) {
        const PreferenceKey* const row = preferenceKey(key);
        EXPECT_EQ(row ? row->name : "", expected) << key;
    }
}

} // namespace

} // namespace appledger
