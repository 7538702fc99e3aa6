#include "entry/hook_groups.h"

#include "panel/swipe_properties.h"
#include "surfaces/name_and_badge_hooks.h"
#include "surfaces/notification_hooks.h"
#include "surfaces/uninstall_hooks.h"

namespace appledger {

const HookGroup IOS13_AND_NEWER_HOOKS { "IOS13_AND_NEWER_HOOKS" };
const HookGroup IOS12_AND_OLDER_HOOKS { "IOS12_AND_OLDER_HOOKS" };
const HookGroup GlobalIconHooks { "GlobalIconHooks" };
const HookGroup SearchUIHooks { "SearchUIHooks" };
const HookGroup NotificationHooks_iOS15 { "NotificationHooks_iOS15" };

namespace {

constexpr const HookRows* baseTables[] { &notificationRows };
constexpr const HookRows* sharedTables[] { &swipePropertyRows, &uninstallProtectionRows, &nameAndBadgeRows };

} // namespace

const HookGroup BaseHooks { .name = "BaseHooks", .tables = baseTables };
const HookGroup SHARED_HOOKS { .name = "SHARED_HOOKS", .tables = sharedTables };

namespace {

// The order is behaviour: where two groups replace one method, the later one runs first.
constexpr const HookGroup* order[] {
    &BaseHooks,
    &SHARED_HOOKS,
    &IOS13_AND_NEWER_HOOKS,
    &IOS12_AND_OLDER_HOOKS,
    &BlockLaunchHooks,
    &NoRedirectPrimary,
    &AutoClearHooks,
    &ImmortalizerHooks,
    &HiddenAppHooks,
    &AppMuteHooks,
    &RunningIndicatorHooks,
};

} // namespace

std::span<const HookGroup* const> springBoardGroups() noexcept
{
    return order;
}

} // namespace appledger
