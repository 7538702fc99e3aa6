#pragma once

#include "core/policy_cache.h"

#include <atomic>
#include <string>

/// The policy caches of this process and what reloads them. A cache is filled at load in the processes
/// that need it and after that only when its change notification arrives; until then it lists nothing.

namespace appledger {

extern PolicyCache blockedAppsCache; ///< ALBlockedNotifications
extern PolicyCache mutedNotifAppsCache; ///< ALMutedNotifications
extern PolicyCache g_blockedLaunchApps;
extern PolicyCache g_blockedUninstallApps;
extern PolicyCache g_blockedUpdateApps; ///< kept up to date; the store's decisions read the domain itself
extern PolicyCache g_autoClearCacheApps;
extern std::atomic<bool> g_globalAutoClearCache;
extern PolicyCache g_hiddenApps;
extern PolicyCache g_requireAuthApps;
extern PolicyCache g_keepAwakeApps;
extern PolicyCache g_customBadgesCache; ///< a dictionary, or nil when the key is absent
extern std::atomic<bool> g_RunningIndicatorEnabled;
extern platform::Published<std::string> g_RunningIndicatorColorHex; ///< null until loaded
extern std::atomic<bool> g_ImmortalEnabled;
extern std::atomic<bool> g_ImmortalIndicatorEnabled;
extern std::atomic<bool> g_ImmortalToastEnabled;
extern std::atomic<bool> g_ImmortalLockIndicatorEnabled;
extern PolicyCache g_ImmortalForegroundApps;
extern PolicyCache g_ImmortalLockedApps;
extern PolicyCache g_ImmortalNotifApps;

inline constexpr std::string_view defaultRunningIndicatorColor = "#AF52DE";

// Reloads. Each rereads its keys from the domain, on the thread on which it is called, and tells nobody.
// A missing key gives its default; a value of the wrong type is kept and lists nothing.
void reloadNotificationSettings(); ///< both notification lists
void reloadMutedNotificationSettings(); ///< ALMutedNotifications alone
void UpdateBlockedAppsCache();
void UpdateBlockedUninstallAppsCache();
void UpdateBlockedUpdateAppsCache(); ///< from the domain's file, else from the suite
void UpdateAutoClearCacheAppsCache();
void UpdateHiddenAppsCache();
void UpdateRequireAuthAppsCache();
void UpdateKeepAwakeAppsCache();
void UpdateCustomBadgesCache();
void UpdateRunningIndicatorCache();
void UpdateImmortalizerCache();

// What the change notifications call where a reload isn't all that they do, or goes by another name.
void BlockedUpdateAppsChangedCallback();
void KeepAwakeChangedCallback();
void BlockedAppsLaunchChangedCallback();
void BlockedUninstallAppsChangedCallback();
void AutoClearCacheChangedCallback();
void CustomBadgesChangedCallback();
void RequireAuthChangedCallback();
void RunningIndicatorChangedCallback(); ///< and then posts "com.appledger.forcerefresh"

/// The blocked updates as the domain holds them now, in a new mutable array; empty when the key is absent
/// or no array. Every decision about the store reads this.
platform::id ALGetBlockedUpdateApps();

} // namespace appledger
