#pragma once

#include "core/hook_group.h"

namespace appledger {

/// The dot of running applications on their icon views.
extern const HookGroup RunningIndicatorHooks;

} // namespace appledger
