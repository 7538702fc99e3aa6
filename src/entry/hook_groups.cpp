#include "entry/hook_groups.h"

namespace appledger {

const HookGroup AppStoreUpdateHooks { "AppStoreUpdateHooks" };
const HookGroup BaseHooks { "BaseHooks" };
const HookGroup IOS13_AND_NEWER_HOOKS { "IOS13_AND_NEWER_HOOKS" };
const HookGroup IOS12_AND_OLDER_HOOKS { "IOS12_AND_OLDER_HOOKS" };
const HookGroup AutoClearHooks { "AutoClearHooks" };
const HookGroup HiddenAppHooks { "HiddenAppHooks" };
const HookGroup GlobalIconHooks { "GlobalIconHooks" };
const HookGroup SearchUIHooks { "SearchUIHooks" };
const HookGroup NotificationHooks_iOS15 { "NotificationHooks_iOS15" };

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
