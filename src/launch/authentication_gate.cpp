#include "launch/authentication_gate.h"

#include "platform/runtime/class.h"

namespace appledger {

using namespace platform;

Published<std::string> g_authBypassAppId;

void ALPromptAuthAndLaunchApp(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty() || !NSClassFromString("LAContext"))
        return;
}

} // namespace appledger
