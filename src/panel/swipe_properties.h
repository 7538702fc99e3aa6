#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Where an icon's image view keeps the recognizers that open the panel. SpringBoard; part of SHARED_HOOKS.
extern const HookRows swipePropertyRows;

} // namespace appledger
