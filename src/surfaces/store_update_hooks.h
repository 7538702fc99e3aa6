#pragma once

#include "core/hook_group.h"

namespace appledger {

/// Keeps the store from showing and installing updates of the applications of ALBlockedUpdateApps. Every call
/// reads the domain anew. Where one of the system's objects raises while it is looked at, the purchase goes on
/// as if nothing were blocked.
extern const HookGroup AppStoreUpdateHooks;

} // namespace appledger
