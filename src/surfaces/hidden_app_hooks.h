#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Takes hidden applications out of the Home Screen and of what the system believes to be on it. The layers
/// overlap: each holds by itself. SpringBoard.
extern const HookGroup HiddenAppHooks;

} // namespace appledger
