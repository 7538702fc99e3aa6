#pragma once

#include "phone/frontboard/open_request.h"
#include "platform/darwin/bus.h"

#include <string_view>

/// What the processes of the phone answer, as JSON text in both directions. A request is an object with a
/// "verb"; an answer has "ok", and where that is false, an "error" for people.

namespace phone {

/// In SpringBoard: "status", "open" (a road and the applications), "home", "open-request" (from another
/// process), "transition" (from another application), "screenshot" (into a file of the host, at a scale),
/// "describe" (the views as text), "folder" (opens or closes one by its name), "icons", "uninstall", "push",
/// "notifications", "volume" and "brightness" (with a "level", sets it), "switcher" (its
/// cards), "swipe" (a card away), "authenticate" (answers the prompt that is up), "exit" (an application's process
/// ends), and what the store's processes answer.
void handleSpringBoardRequest(std::string_view request, platform::BusReply reply);

/// In Spotlight: "status", "open" (a road of Spotlight's and one application), "authenticate".
void handleSpotlightRequest(std::string_view request, platform::BusReply reply);

/// In the App Store and the store's daemons: "status", "store-buy" (a road of the store's and what is to be bought),
/// "store-updates".
void handleStoreRequest(std::string_view request, platform::BusReply reply);

/// Asks SpringBoard to open an application, and writes what happened there into this process's journal.
/// True when it came up.
bool forwardOpenRequest(const OpenRequest& request);

} // namespace phone
