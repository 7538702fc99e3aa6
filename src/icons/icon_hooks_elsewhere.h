#pragma once

#include "core/hook_group.h"

/// The owner's pictures outside of the Home Screen. Each hook lets the system answer first, whose image says how large
/// the icon is and stands where the owner has none, and where the system raises.

namespace appledger {

/// Wherever a process asks for an application's icon. Every process with images.
extern const HookGroup GlobalIconHooks;

/// Search results and the views of icons, which follow a change while they are seen.
extern const HookGroup SearchUIHooks;

/// Notification banners, on version 15 and newer.
extern const HookGroup NotificationHooks_iOS15;

} // namespace appledger
