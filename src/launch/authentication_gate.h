#pragma once

#include "platform/runtime/reclamation.h"

#include <string>
#include <string_view>

namespace appledger {

/// Asks the owner of the phone to authenticate, and opens the application if that succeeds. The caller has
/// stopped the launch already and doesn't wait. Nothing for an empty identifier, and on a system that
/// can't authenticate: the launch stays stopped.
void ALPromptAuthAndLaunchApp(std::string_view bundleIdentifier);

/// The one application that the roads don't prompt for now; null when there is none.
extern platform::Published<std::string> g_authBypassAppId;

} // namespace appledger
