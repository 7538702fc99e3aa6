#pragma once

#include "core/hex_color.h"
#include "core/notification_names.h"
#include "core/policy_cache.h"
#include "core/preference_domain.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <string>

/// The policies: one row says all that more than one place has to know of each. A policy's caches are filled at load
/// in the processes that need it (entry/load_plan.cpp) and after that only when its notification arrives
/// (entry/observers.cpp); until then they list nothing.

namespace appledger {

/// What is reread together when a notification says so. The names of its reload and of its observer's callback are
/// what the plan of a load prints.
struct Policy {
    std::string_view key {}; ///< of a policy that is one list; other policies' keys stand in the table below
    PolicyCache* cache = nullptr; ///< of that list
    std::string_view notification;
    std::string_view reloadName;
    std::string_view callbackName;
    std::string_view also {}; ///< the reload name of a policy that is reread with it
    void (*reload)() = nullptr; ///< in place of reading the suite alone
};

/// Rereads the policy's keys from the domain, on the thread on which it is called, and tells nobody. A missing key
/// gives its default; a list or table of the wrong type lists nothing.
void reload(const Policy& policy);

/// From the domain's file where that has the key, else from the suite.
void UpdateBlockedUpdateAppsCache();

// Each with this process's copies of what the domain holds.

inline constinit PolicyCache mutedNotifAppsCache;
namespace policy {
inline constexpr Policy mutedNotifications {
    .key = "ALMutedNotifications",
    .cache = &mutedNotifAppsCache,
    .notification = "com.orbelix.appledger.notifications_muted_changed",
    .reloadName = "reloadMutedNotificationSettings",
    .callbackName = "reloadMutedNotificationSettings",
};
}

inline constinit PolicyCache blockedAppsCache;
namespace policy {
inline constexpr Policy blockedNotifications {
    .key = "ALBlockedNotifications",
    .cache = &blockedAppsCache,
    .notification = "com.orbelix.appledger.notifications_changed",
    .reloadName = "reloadNotificationSettings",
    .callbackName = "reloadNotificationSettings",
    .also = mutedNotifications.reloadName,
};
}

inline constinit PolicyCache g_blockedLaunchApps;
namespace policy {
inline constexpr Policy blockedLaunch {
    .key = "ALBlockedLaunchApps",
    .cache = &g_blockedLaunchApps,
    .notification = "com.orbelix.appledger.launch_blocked_changed",
    .reloadName = "UpdateBlockedAppsCache",
    .callbackName = "BlockedAppsLaunchChangedCallback",
};
}

inline constinit PolicyCache g_blockedUninstallApps;
namespace policy {
inline constexpr Policy blockedUninstall {
    .key = "ALBlockedUninstallApps",
    .cache = &g_blockedUninstallApps,
    .notification = "com.orbelix.appledger.uninstall_blocked_changed",
    .reloadName = "UpdateBlockedUninstallAppsCache",
    .callbackName = "BlockedUninstallAppsChangedCallback",
};
}

inline constinit PolicyCache g_blockedUpdateApps; ///< kept up to date; the store's decisions read the domain itself
namespace policy {
inline constexpr Policy blockedUpdate {
    .key = "ALBlockedUpdateApps",
    .cache = &g_blockedUpdateApps,
    .notification = "com.orbelix.appledger.update_blocked_changed",
    .reloadName = "UpdateBlockedUpdateAppsCache",
    .callbackName = "BlockedUpdateAppsChangedCallback",
    .reload = UpdateBlockedUpdateAppsCache,
};
}

inline constinit PolicyCache g_autoClearCacheApps;
inline constinit std::atomic<bool> g_globalAutoClearCache { false };
namespace policy {
inline constexpr Policy autoClear {
    .key = "ALAutoClearCacheApps",
    .cache = &g_autoClearCacheApps,
    .notification = "com.orbelix.appledger.autoclear_changed",
    .reloadName = "UpdateAutoClearCacheAppsCache",
    .callbackName = "AutoClearCacheChangedCallback",
};
}

inline constinit PolicyCache g_hiddenApps;
namespace policy {
inline constexpr Policy hidden {
    .key = "ALHiddenApps",
    .cache = &g_hiddenApps,
    .notification = "com.orbelix.appledger.hidden_changed",
    .reloadName = "UpdateHiddenAppsCache",
    .callbackName = "HiddenAppsChangedCallback",
};
}

inline constinit PolicyCache g_requireAuthApps;
namespace policy {
inline constexpr Policy requireAuth {
    .key = "ALRequireAuthApps",
    .cache = &g_requireAuthApps,
    .notification = "com.orbelix.appledger.requireauth_changed",
    .reloadName = "UpdateRequireAuthAppsCache",
    .callbackName = "RequireAuthChangedCallback",
};
}

inline constinit PolicyCache g_keepAwakeApps;
namespace policy {
inline constexpr Policy keepAwake {
    .key = "ALKeepAwakeApps",
    .cache = &g_keepAwakeApps,
    .notification = "com.orbelix.appledger.keepawake_changed",
    .reloadName = "UpdateKeepAwakeAppsCache",
    .callbackName = "KeepAwakeChangedCallback",
};
}

inline constinit PolicyCache g_customBadgesCache; ///< a dictionary, or nil when the key is absent
namespace policy {
inline constexpr Policy customBadges {
    .notification = "com.orbelix.appledger.badge_changed",
    .reloadName = "UpdateCustomBadgesCache",
    .callbackName = "CustomBadgesChangedCallback",
};
}

inline constinit std::atomic<bool> g_RunningIndicatorEnabled { false };
inline constinit platform::Published<std::string> g_RunningIndicatorColorHex; ///< null until loaded
namespace policy {
inline constexpr Policy runningIndicator {
    .notification = "com.merrowlane.appledger.runningindicator-changed",
    .reloadName = "UpdateRunningIndicatorCache",
    .callbackName = "RunningIndicatorChangedCallback",
};
}

namespace policy {
inline constexpr Policy redirect {
    ///< its rules are read by launch/redirect_rules.cpp
    .notification = "com.orbelix.appledger.redirect_saved",
    .reloadName = "ReloadRedirectPrefs",
    .callbackName = "ReloadRedirectPrefs",
};
}

inline constinit std::atomic<bool> g_ImmortalEnabled { false };
inline constinit std::atomic<bool> g_ImmortalIndicatorEnabled { false };
inline constinit std::atomic<bool> g_ImmortalToastEnabled { false };
inline constinit std::atomic<bool> g_ImmortalLockIndicatorEnabled { false };
inline constinit PolicyCache g_ImmortalForegroundApps;
inline constinit PolicyCache g_ImmortalLockedApps;
inline constinit PolicyCache g_ImmortalNotifApps;
namespace policy {
inline constexpr Policy immortalizer {
    .notification = "com.orbelix.appledger.immortalizer_changed",
    .reloadName = "UpdateImmortalizerCache",
    .callbackName = "ImmortalizerChangedCallback",
};
}

/// Keys that are named outside of the table and aren't a policy's list.
namespace preference {

inline constexpr std::string_view everyCacheClears = "GlobalAutoClearCacheEnabled";
inline constexpr std::string_view customBadges = "ALCustomBadges";
inline constexpr std::string_view realBadges = "ALRealBadges";
inline constexpr std::string_view isPanelModifying = "ALIsPanelModifying";
inline constexpr std::string_view lastModifiedIcon = "ALLastModifiedIconBundleID";
inline constexpr std::string_view language = "ALLanguage";
inline constexpr std::string_view runningIndicator = "RunningIndicatorEnabled";
inline constexpr std::string_view runningIndicatorColor = "RunningIndicatorColor";
inline constexpr std::string_view customNames = "CustomAppNames";
inline constexpr std::string_view swipeUp = "SwipeUpEnabled";
inline constexpr std::string_view swipeDown = "SwipeDownEnabled";
inline constexpr std::string_view forceTouchMenu = "ForceTouchMenuEnabled";
inline constexpr std::string_view hideSeparators = "HidePanelSeparatorsEnabled";
inline constexpr std::string_view appearance = "kAppearance";
inline constexpr std::string_view directoryOpener = "DirectoryOpener";

} // namespace preference

/// What the keys of the redirect rules begin with; a bundle identifier follows.
namespace redirectKey {

inline constexpr std::string_view forbiddenSource = "IsBlockedFromLaunchingOthers/";
inline constexpr std::string_view forbiddenDestination = "IsBlockedFromBeingLaunched/";
inline constexpr std::string_view forbiddenSourceForAppStore = "IsBlockedFromLaunchingAppStore/";
inline constexpr std::string_view forbiddenSourceForSafari = "IsBlockedFromLaunchingSafari/";
inline constexpr std::string_view lenientSource = "ShouldTeardownAutomatically/";
inline constexpr std::string_view simulatedSource = "ShouldSimulateSuccess/";
inline constexpr std::string_view allowedSources = "CustomBypassedApplications/"; ///< may open the key's application
inline constexpr std::string_view forbiddenDestinations = "CustomBlockedApplications/"; ///< the key's may not open them

} // namespace redirectKey

namespace detail {

consteval PreferenceKey keyOf(const Policy& list)
{
    return { list.key, PreferenceType::IdentifierList, "empty", list.notification, list.reloadName, &list, list.cache };
}

consteval PreferenceKey keyOf(const Policy& policy, std::string_view name, PreferenceType type,
    std::string_view defaultText, PreferenceCache cache = {})
{
    return { name, type, defaultText, policy.notification, policy.reloadName, &policy, cache };
}

consteval PreferenceKey keyOf(
    std::string_view name, PreferenceType type, std::string_view defaultText, std::string_view notification = "")
{
    if (type == PreferenceType::IdentifierList)
        throw "a list that is no policy's would be reread by nobody";
    return { name, type, defaultText, notification };
}

consteval PreferenceKey within(const PreferenceRange& range, PreferenceKey key)
{
    key.range = range;
    return key;
}

} // namespace detail

/// Every key of the domain, in the order of documentation.
inline constexpr auto preferenceTable = [] {
    using detail::keyOf;
    using detail::within;
    using enum PreferenceType;
    return std::to_array<PreferenceKey>({
        keyOf(policy::blockedNotifications),
        keyOf(policy::mutedNotifications),
        keyOf(policy::blockedLaunch),
        keyOf(policy::blockedUninstall),
        keyOf(policy::blockedUpdate),
        keyOf(policy::autoClear),
        keyOf(policy::autoClear, preference::everyCacheClears, Boolean, "false", &g_globalAutoClearCache),
        keyOf(policy::hidden),
        keyOf(policy::requireAuth),
        keyOf(policy::keepAwake),
        keyOf(policy::customBadges, preference::customBadges, NumberTable, "none", &g_customBadgesCache),
        keyOf(preference::realBadges, NumberTable, "none"),
        keyOf(preference::isPanelModifying, Boolean, "false"),
        keyOf(policy::runningIndicator, preference::runningIndicator, Boolean, "false", &g_RunningIndicatorEnabled),
        within(preferenceRange::color,
            keyOf(policy::runningIndicator, preference::runningIndicatorColor, String, defaultColorHex,
                &g_RunningIndicatorColorHex)),
        keyOf(policy::immortalizer, "ALImmortalEnabled", Boolean, "true", &g_ImmortalEnabled),
        keyOf(policy::immortalizer, "ALImmortalIndicatorEnabled", Boolean, "true", &g_ImmortalIndicatorEnabled),
        keyOf(policy::immortalizer, "ALImmortalToastEnabled", Boolean, "true", &g_ImmortalToastEnabled),
        keyOf(policy::immortalizer, "ALImmortalLockIndicatorEnabled", Boolean, "true", &g_ImmortalLockIndicatorEnabled),
        keyOf(policy::immortalizer, "ALImmortalForegroundApps", IdentifierList, "empty", &g_ImmortalForegroundApps),
        keyOf(policy::immortalizer, "ALImmortalLockedApps", IdentifierList, "empty", &g_ImmortalLockedApps),
        keyOf(policy::immortalizer, "ALImmortalNotifApps", IdentifierList, "empty", &g_ImmortalNotifApps),
        keyOf(policy::redirect, redirectKey::forbiddenSource, Boolean, "false"),
        keyOf(policy::redirect, redirectKey::forbiddenDestination, Boolean, "false"),
        keyOf(policy::redirect, redirectKey::forbiddenSourceForAppStore, Boolean, "false"),
        keyOf(policy::redirect, redirectKey::forbiddenSourceForSafari, Boolean, "false"),
        keyOf(policy::redirect, redirectKey::lenientSource, Boolean, "false"),
        keyOf(policy::redirect, redirectKey::simulatedSource, Boolean, "false"),
        keyOf(policy::redirect, redirectKey::allowedSources, IdentifierList, "empty"),
        keyOf(policy::redirect, redirectKey::forbiddenDestinations, IdentifierList, "empty"),
        keyOf(preference::lastModifiedIcon, String, "none", notification::clearCache),
        within(preferenceRange::language, keyOf(preference::language, String, "none: the device's language")),
        keyOf("ALOffloadModeEnabled", Boolean, "false"),
        within(preferenceRange::rowList, keyOf("ALFeatureListItems", RowList, "built by the panel")),
        within(preferenceRange::rowList, keyOf("ALActionBarItems", RowList, "built by the panel")),
        keyOf(preference::customNames, StringTable, "none"),
        keyOf(preference::swipeUp, Boolean, "true"),
        keyOf(preference::swipeDown, Boolean, "false"),
        keyOf(preference::forceTouchMenu, Boolean, "false"),
        keyOf(preference::hideSeparators, Boolean, "false"),
        within(preferenceRange::appearance, keyOf(preference::appearance, Integer, "0")),
        within(preferenceRange::directoryOpener, keyOf(preference::directoryOpener, String, "filza")),
    });
}();

/// The reload of one policy, for tables. A policy that has no key in the table has nothing to reread.
template <const Policy& Row> void reload()
{
    static_assert(
        std::ranges::find(preferenceTable, Row.reloadName, &PreferenceKey::reloadName) != preferenceTable.end(),
        "the policy has no key in the table of the domain");
    reload(Row);
}

/// Rereads the indicator's keys and has every process draw its icons anew.
void RunningIndicatorChangedCallback();

/// The blocked updates as the domain holds them now, in a new mutable array; empty when the key is absent
/// or no array. Every decision about the store reads this.
platform::id ALGetBlockedUpdateApps();

} // namespace appledger
