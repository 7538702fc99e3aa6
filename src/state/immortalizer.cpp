#include "state/immortalizer.h"

#include "core/policies.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "state/immortalizer_decision.h"

namespace appledger {

using namespace platform;

namespace {

void refreshImmortalApplications()
{
    const id server = askObject<"sharedInstance">(id(NSClassFromString("UNSUserNotificationServer")));
    const auto foreground = g_ImmortalForegroundApps.read();
    for (const std::string_view identifier : foreground.list())
        refreshIconAccessories(identifier);
    for (const std::string_view identifier : foreground.list())
        tellApplicationState(server, identifier);
}

} // namespace

id refreshIconAccessories(std::string_view bundleIdentifier)
{
    const id controller = askObject<"sharedInstance">(id(classNamed<"SBIconController">()));
    id icon
        = askObject<"applicationIconForBundleIdentifier:">(askObject<"model">(controller), string(bundleIdentifier));
    ask<"_notifyAccessoriesDidUpdate", void>(icon);
    return icon;
}

void tellApplicationState(const id& server, std::string_view bundleIdentifier)
{
    ask<"_didChangeApplicationState:forBundleIdentifier:", void>(
        server, toldState(g_ImmortalNotifApps.contains(bundleIdentifier)), string(bundleIdentifier));
}

void ImmortalizerChangedCallback()
{
    reload(policy::immortalizer);
    dispatch_async(dispatch_get_main_queue(), refreshImmortalApplications);
}

} // namespace appledger
