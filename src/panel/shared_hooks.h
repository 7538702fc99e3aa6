#pragma once

#include "core/hook_group.h"

namespace appledger {

/// The hooks of the Home Screen that the panel, the icons and the names share.
extern const HookGroup SHARED_HOOKS;

} // namespace appledger
