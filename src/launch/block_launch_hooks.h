#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Stops launches of blocked, hidden and protected applications on every road of SpringBoard.
extern const HookGroup BlockLaunchHooks;

/// The same in the Spotlight process, on what it read at its load.
extern const HookGroup SpotlightHooks;

} // namespace appledger
