#pragma once

#include "platform/runtime/object.h"

#include <string_view>

namespace appledger {

/// Has the application's icon ask anew for its label accessory. The icon, or nil where there is none. Main
/// queue.
platform::id refreshIconAccessories(std::string_view bundleIdentifier);

/// Tells a notification server the application's state: 4, so that its notifications are handled as for a
/// background application, where that is allowed, else 8. Nothing for a server that isn't told of states.
void tellApplicationState(const platform::id& server, std::string_view bundleIdentifier);

/// Rereads the Immortalizer's policies, then on the main queue has the icons and the notification state of
/// the applications that are kept alive follow them. An application that has just left the list keeps its
/// icon accessory and its state until its next event.
void ImmortalizerChangedCallback();

} // namespace appledger
