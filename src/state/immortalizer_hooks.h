#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Keeps chosen applications running as if they were in front, keeps others from being killed in the
/// switcher, and marks both.
extern const HookGroup ImmortalizerHooks;

} // namespace appledger
