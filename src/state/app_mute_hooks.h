#pragma once

#include "core/hook_group.h"

namespace appledger {

/// The one source of foreground and background events for the volume, the brightness and the idle timer;
/// and the silence of the volume HUD while the library changes the volume.
extern const HookGroup AppMuteHooks;

} // namespace appledger
