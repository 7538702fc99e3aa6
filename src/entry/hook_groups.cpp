#include "entry/hook_groups.h"

#include "icons/home_icon_hooks.h"
#include "panel/icon_image_view_hooks.h"
#include "surfaces/name_and_badge_hooks.h"
#include "surfaces/notification_hooks.h"
#include "surfaces/uninstall_hooks.h"

namespace appledger {

const HookGroup IOS13_AND_NEWER_HOOKS { "IOS13_AND_NEWER_HOOKS" };
const HookGroup IOS12_AND_OLDER_HOOKS { "IOS12_AND_OLDER_HOOKS" };

namespace {

constexpr const HookRows* baseTables[] { &notificationRows, &bookmarkIconRows };
constexpr const HookRows* sharedTables[] { &iconImageViewRows, &iconUpdateRows, &nameAndBadgeRows, &leafIconRows,
    &uninstallProtectionRows };

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
