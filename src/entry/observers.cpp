#include "entry/observers.h"

#include "core/notification_names.h"
#include "core/policy_caches.h"
#include "icons/icon_cache.h"
#include "launch/redirect_rules.h"
#include "state/app_brightness_manager.h"
#include "state/immortalizer.h"
#include "surfaces/hidden_apps.h"

namespace appledger {

namespace {

using namespace notification;
using enum ObserverRole;

constexpr Observer rows[] {
    { forceRefresh, "ALForceRefreshIconsCallback", ALForceRefreshIconsCallback, EveryProcess },
    { clearCache, "ALClearSpecificIconCache", ALClearSpecificIconCache, EveryProcess },
    { updateBlockedChanged, "BlockedUpdateAppsChangedCallback", BlockedUpdateAppsChangedCallback, Store },
    { keepAwakeChanged, "KeepAwakeChangedCallback", KeepAwakeChangedCallback, SpringBoard },
    { notificationsChanged, "reloadNotificationSettings", reloadNotificationSettings, SpringBoard },
    { notificationsMutedChanged, "reloadMutedNotificationSettings", reloadMutedNotificationSettings, SpringBoard },
    { launchBlockedChanged, "BlockedAppsLaunchChangedCallback", BlockedAppsLaunchChangedCallback, SpringBoard },
    { uninstallBlockedChanged, "BlockedUninstallAppsChangedCallback", BlockedUninstallAppsChangedCallback,
        SpringBoard },
    { autoClearChanged, "AutoClearCacheChangedCallback", AutoClearCacheChangedCallback, SpringBoard },
    { hiddenChanged, "HiddenAppsChangedCallback", HiddenAppsChangedCallback, SpringBoard },
    { badgeChanged, "CustomBadgesChangedCallback", CustomBadgesChangedCallback, SpringBoard },
    { requireAuthChanged, "RequireAuthChangedCallback", RequireAuthChangedCallback, SpringBoard },
    { brightnessChanged, "BrightnessChangedCallback", BrightnessChangedCallback, SpringBoard },
    { runningIndicatorChanged, "RunningIndicatorChangedCallback", RunningIndicatorChangedCallback, SpringBoard },
    { redirectSaved, "ReloadRedirectPrefs", ReloadRedirectPrefs, SpringBoard },
    { immortalizerChanged, "ImmortalizerChangedCallback", ImmortalizerChangedCallback, SpringBoard },
};

} // namespace

std::span<const Observer> observers() noexcept
{
    return rows;
}

} // namespace appledger
