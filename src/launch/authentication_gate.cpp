#include "launch/authentication_gate.h"

#include "core/text.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <atomic>
#include <chrono>

namespace appledger {

using namespace platform;
using namespace std::chrono_literals;

Published<std::string> g_authBypassAppId;

namespace {

constexpr NSInteger LAPolicyDeviceOwnerAuthentication = 2;
constexpr auto launchDelay = 300ms;
constexpr auto graceTime = 5s;

/// The prompt in progress, and all that keeps it. Prompts may start on several threads at once and nobody
/// reads the reference, so it is exchanged, and whoever takes one out releases it.
constinit std::atomic<NSObject*> g_authContext { nullptr };

void setAuthContext(id context)
{
    id::adopt(g_authContext.exchange(context.leak(), std::memory_order_acq_rel));
}

void forgetAuthContext()
{
    dispatch_async(dispatch_get_main_queue(), [] { setAuthContext(nil); });
}

bool isBypass(std::string_view identifier)
{
    const ReadSection section;
    const std::string* const bypass = g_authBypassAppId.load();
    return bypass && *bypass == identifier;
}

/// The roads let the application pass, as long as it is the one that they don't prompt for.
void launch(const std::string& identifier)
{
    const id service = NSClassFromString("FBSOpenApplicationService");
    if (const auto shared = ask<"sharedInstance">(service))
        ask<"openApplication:withOptions:completion:", void>(*shared, string(identifier), nil, nil);
    else
        ask<"openApplicationWithBundleID:", bool>(
            askObject<"defaultWorkspace">(NSClassFromString("LSApplicationWorkspace")), string(identifier));
    forgetAuthContext();
}

void grant(const std::string& identifier)
{
    dispatch_async(dispatch_get_main_queue(), [identifier] { g_authBypassAppId.assign(new std::string(identifier)); });
    dispatch_after(launchDelay, dispatch_get_global_queue(QueuePriority::High), [identifier] { launch(identifier); });
    dispatch_after(graceTime, dispatch_get_main_queue(), [identifier] {
        if (isBypass(identifier))
            g_authBypassAppId.assign(nullptr);
    });
}

} // namespace

void ALPromptAuthAndLaunchApp(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return;
    const id contextClass = NSClassFromString("LAContext");
    if (!contextClass)
        return;
    const id context = send<"init">(send<"alloc">(contextClass));
    setAuthContext(context);
    ask<"setLocalizedFallbackTitle:", void>(context, string(ALLoc("Enter Password")));
    send<"evaluatePolicy:localizedReason:reply:", void>(context, LAPolicyDeviceOwnerAuthentication,
        string(ALLoc("Authenticate to open this app.")),
        block([identifier = std::string(bundleIdentifier)](bool success, const id&) {
            if (success)
                grant(identifier);
            else
                forgetAuthContext();
        }));
}

} // namespace appledger
