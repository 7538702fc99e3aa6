#include "entry/observers.h"

#include "core/policies.h"
#include "icons/icon_cache.h"
#include "launch/redirect_rules.h"
#include "state/app_brightness_manager.h"
#include "state/immortalizer.h"
#include "surfaces/hidden_apps.h"

#include <algorithm>
#include <iterator>

namespace appledger {

namespace {

using enum ObserverRole;

template <const Policy& Row, void (*Callback)() = reload<Row>>
consteval Observer observe(ObserverRole role = SpringBoard)
{
    return { Row.notification, Row.callbackName, Callback, role };
}

constexpr Observer rows[] {
    { notification::forceRefresh, "ALForceRefreshIconsCallback", ALForceRefreshIconsCallback, EveryProcess },
    { notification::clearCache, "ALClearSpecificIconCache", ALClearSpecificIconCache, EveryProcess },
    observe<policy::blockedUpdate>(Store),
    observe<policy::keepAwake>(),
    observe<policy::blockedNotifications>(),
    observe<policy::mutedNotifications>(),
    observe<policy::blockedLaunch>(),
    observe<policy::blockedUninstall>(),
    observe<policy::autoClear>(),
    observe<policy::hidden, HiddenAppsChangedCallback>(),
    observe<policy::customBadges>(),
    observe<policy::requireAuth>(),
    { notification::brightnessChanged, "BrightnessChangedCallback", BrightnessChangedCallback, SpringBoard },
    observe<policy::runningIndicator, RunningIndicatorChangedCallback>(),
    observe<policy::redirect, ReloadRedirectPrefs>(),
    observe<policy::immortalizer, ImmortalizerChangedCallback>(),
};

constexpr bool isObserved(std::string_view notification)
{
    return std::ranges::find(rows, notification, &Observer::notification) != std::end(rows);
}

static_assert(std::ranges::all_of(preferenceTable,
                  [](const PreferenceKey& key) { return key.notification.empty() || isObserved(key.notification); }),
    "a key in the table has a notification that no process observes");

} // namespace

std::span<const Observer> observers() noexcept
{
    return rows;
}

} // namespace appledger
