#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Keeps the notifications of blocked applications from being published and those of muted ones from sounding.
/// SpringBoard; part of BaseHooks.
extern const HookRows notificationRows;

} // namespace appledger
