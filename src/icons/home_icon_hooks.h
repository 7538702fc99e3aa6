#pragma once

#include "core/hook_group.h"

/// The owner's pictures on the Home Screen. SpringBoard.

namespace appledger {

/// Web clips, under both names that their class has had; with the owner's names. Part of BaseHooks.
extern const HookRows bookmarkIconRows;

/// What an icon does when its picture is said to have changed. Part of SHARED_HOOKS.
extern const HookRows iconUpdateRows;

/// Applications. Part of SHARED_HOOKS.
extern const HookRows leafIconRows;

} // namespace appledger
