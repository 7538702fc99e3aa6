#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Clears the caches of the chosen applications whenever their process ends, and once, half a minute after
/// SpringBoard has started.
extern const HookGroup AutoClearHooks;

} // namespace appledger
