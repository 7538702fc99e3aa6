#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Keeps protected applications from being removed from the Home Screen: their icons offer no removal, and one
/// that comes through anyway ends in a haptic tap. SpringBoard; part of SHARED_HOOKS.
extern const HookRows uninstallProtectionRows;

} // namespace appledger
