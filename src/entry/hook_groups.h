#pragma once

#include "core/hook_group.h"
#include "icons/icon_hooks_elsewhere.h"
#include "launch/block_launch_hooks.h"
#include "launch/redirect_hooks.h"
#include "state/app_mute_hooks.h"
#include "state/immortalizer_hooks.h"
#include "state/running_indicator_hooks.h"
#include "surfaces/auto_clear_hooks.h"
#include "surfaces/hidden_app_hooks.h"
#include "surfaces/store_update_hooks.h"

#include <span>

namespace appledger {

// Groups whose replacements aren't written yet: their place in the install order is fixed, their rows
// come with the replacements.
extern const HookGroup IOS13_AND_NEWER_HOOKS;
extern const HookGroup IOS12_AND_OLDER_HOOKS;

// Groups that several subjects share: their tables are put together here, where all of them are known.
extern const HookGroup BaseHooks;
extern const HookGroup SHARED_HOOKS;

/// The groups of SpringBoard alone, in install order. All are installed on every version: a class or a
/// selector that a version doesn't have leaves its rows without effect.
std::span<const HookGroup* const> springBoardGroups() noexcept;

} // namespace appledger
