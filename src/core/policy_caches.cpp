#include "core/policy_caches.h"

#include "core/notification_names.h"
#include "core/preference_domain.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"

namespace appledger {

using namespace platform;

PolicyCache blockedAppsCache;
PolicyCache mutedNotifAppsCache;
PolicyCache g_blockedLaunchApps;
PolicyCache g_blockedUninstallApps;
PolicyCache g_blockedUpdateApps;
PolicyCache g_autoClearCacheApps;
std::atomic<bool> g_globalAutoClearCache { false };
PolicyCache g_hiddenApps;
PolicyCache g_requireAuthApps;
PolicyCache g_keepAwakeApps;
PolicyCache g_customBadgesCache;
std::atomic<bool> g_RunningIndicatorEnabled { false };
Published<std::string> g_RunningIndicatorColorHex;
std::atomic<bool> g_ImmortalEnabled { false };
std::atomic<bool> g_ImmortalIndicatorEnabled { false };
std::atomic<bool> g_ImmortalToastEnabled { false };
std::atomic<bool> g_ImmortalLockIndicatorEnabled { false };
PolicyCache g_ImmortalForegroundApps;
PolicyCache g_ImmortalLockedApps;
PolicyCache g_ImmortalNotifApps;

namespace {

const id& orEmpty(const id& value)
{
    return value ? value : emptyArray();
}

void reloadList(const NSUserDefaults& defaults, std::string_view key, PolicyCache& cache)
{
    cache.assign(orEmpty(defaults.objectForKey(key)));
}

void reloadList(std::string_view key, PolicyCache& cache)
{
    reloadList(*synchronizedPreferences(), key, cache);
}

/// The Immortalizer's flags are on unless they were turned off, unlike every other flag of the domain.
bool flagDefaultingToTrue(const NSUserDefaults& defaults, std::string_view key)
{
    return !defaults.objectForKey(key) || defaults.boolForKey(key);
}

} // namespace

void reloadNotificationSettings()
{
    const auto defaults = synchronizedPreferences();
    reloadList(*defaults, "ALBlockedNotifications", blockedAppsCache);
    reloadList(*defaults, "ALMutedNotifications", mutedNotifAppsCache);
}

void reloadMutedNotificationSettings()
{
    reloadList("ALMutedNotifications", mutedNotifAppsCache);
}
void UpdateBlockedAppsCache()
{
    reloadList("ALBlockedLaunchApps", g_blockedLaunchApps);
}
void UpdateBlockedUninstallAppsCache()
{
    reloadList("ALBlockedUninstallApps", g_blockedUninstallApps);
}
void UpdateHiddenAppsCache()
{
    reloadList("ALHiddenApps", g_hiddenApps);
}
void UpdateRequireAuthAppsCache()
{
    reloadList("ALRequireAuthApps", g_requireAuthApps);
}
void UpdateKeepAwakeAppsCache()
{
    reloadList("ALKeepAwakeApps", g_keepAwakeApps);
}

void UpdateBlockedUpdateAppsCache()
{
    const std::string_view file = fileExists(rootlessPreferenceFile) ? rootlessPreferenceFile : preferenceFile;
    if (const auto stored = asDictionary(dictionaryWithContentsOfFile(file)))
        if (const id value = (*stored)["ALBlockedUpdateApps"]) {
            g_blockedUpdateApps.assign(value);
            return;
        }
    reloadList("ALBlockedUpdateApps", g_blockedUpdateApps);
}

void UpdateAutoClearCacheAppsCache()
{
    const auto defaults = synchronizedPreferences();
    reloadList(*defaults, "ALAutoClearCacheApps", g_autoClearCacheApps);
    g_globalAutoClearCache = defaults->boolForKey("GlobalAutoClearCacheEnabled");
}

void UpdateCustomBadgesCache()
{
    g_customBadgesCache.assign(synchronizedPreferences()->dictionaryForKey("ALCustomBadges"));
}

void UpdateRunningIndicatorCache()
{
    const auto defaults = synchronizedPreferences();
    g_RunningIndicatorEnabled = defaults->boolForKey("RunningIndicatorEnabled");
    const auto color = asString(defaults->stringForKey("RunningIndicatorColor"));
    g_RunningIndicatorColorHex.assign(new std::string(color ? color->view() : defaultRunningIndicatorColor));
}

void UpdateImmortalizerCache()
{
    const auto defaults = synchronizedPreferences();
    g_ImmortalEnabled = flagDefaultingToTrue(*defaults, "ALImmortalEnabled");
    g_ImmortalIndicatorEnabled = flagDefaultingToTrue(*defaults, "ALImmortalIndicatorEnabled");
    g_ImmortalToastEnabled = flagDefaultingToTrue(*defaults, "ALImmortalToastEnabled");
    g_ImmortalLockIndicatorEnabled = flagDefaultingToTrue(*defaults, "ALImmortalLockIndicatorEnabled");
    g_ImmortalForegroundApps.assign(orEmpty(defaults->arrayForKey("ALImmortalForegroundApps")));
    g_ImmortalLockedApps.assign(orEmpty(defaults->arrayForKey("ALImmortalLockedApps")));
    g_ImmortalNotifApps.assign(orEmpty(defaults->arrayForKey("ALImmortalNotifApps")));
}

void BlockedUpdateAppsChangedCallback()
{
    UpdateBlockedUpdateAppsCache();
}
void KeepAwakeChangedCallback()
{
    UpdateKeepAwakeAppsCache();
}
void BlockedAppsLaunchChangedCallback()
{
    UpdateBlockedAppsCache();
}
void BlockedUninstallAppsChangedCallback()
{
    UpdateBlockedUninstallAppsCache();
}
void AutoClearCacheChangedCallback()
{
    UpdateAutoClearCacheAppsCache();
}
void CustomBadgesChangedCallback()
{
    UpdateCustomBadgesCache();
}
void RequireAuthChangedCallback()
{
    UpdateRequireAuthAppsCache();
}

void RunningIndicatorChangedCallback()
{
    UpdateRunningIndicatorCache();
    CFNotificationCenterPostNotification(notification::forceRefresh);
}

id ALGetBlockedUpdateApps()
{
    const auto blocked = asArray(CFPreferencesCopyAppValue("ALBlockedUpdateApps", preferenceSuite));
    return blocked ? mutableArray({ blocked->begin(), blocked->end() }) : mutableArray();
}

} // namespace appledger
