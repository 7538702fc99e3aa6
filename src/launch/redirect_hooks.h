#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Decides whether one application may bring another to front, and notes when each was launched. Installed
/// after BlockLaunchHooks, so that it decides first and passes on to that.
extern const HookGroup NoRedirectPrimary;

} // namespace appledger
