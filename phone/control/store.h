#pragma once

#include "phone/control/answers.h"

/// What a process of the store answers.

namespace phone {

/// "store-updates": {"ok", "process", "updates": [{"bundleIdentifier", "isUpdateAvailable", "updateAvailable",
/// "newestVersion"}]}. Refused where the process knows no applications of the store.
Json showStoreUpdates(const Json& request);

/// "store-buy" with "road" and "applications": {"ok", "process", "road", "kept", "refused", "requestExists",
/// "reachedStore" (whether the system's own method ran), "completions" (each call's arguments), "journal"}.
Json buyInStore(const Json& request);

} // namespace phone
