#pragma once

#include "core/hook_group.h"

namespace appledger {

/// What is added to an icon's image view: where it keeps the recognizers that open the panel, and how it is told that
/// its icon may have changed. SpringBoard; part of SHARED_HOOKS.
extern const HookRows iconImageViewRows;

} // namespace appledger
