#include "state/immortalizer.h"

#include "core/policy_caches.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

/// The application states that the notification server is told, as the platform numbers them.
enum class ApplicationState : unsigned { Background = 4, Running = 8 };

void refreshIconAccessories(const id& model, std::string_view identifier)
{
    const id icon = askObject<"applicationIconForBundleIdentifier:">(model, string(identifier));
    ask<"_notifyAccessoriesDidUpdate", void>(icon);
}

void refreshImmortalApplications()
{
    const id controller = askObject<"sharedInstance">(id(NSClassFromString("SBIconController")));
    const id model = askObject<"model">(controller);
    const id server = askObject<"sharedInstance">(id(NSClassFromString("UNSUserNotificationServer")));
    const auto foreground = g_ImmortalForegroundApps.read();
    for (const std::string_view identifier : foreground.list())
        refreshIconAccessories(model, identifier);
    for (const std::string_view identifier : foreground.list()) {
        const auto state
            = g_ImmortalNotifApps.contains(identifier) ? ApplicationState::Background : ApplicationState::Running;
        ask<"_didChangeApplicationState:forBundleIdentifier:", void>(server, state, string(identifier));
    }
}

} // namespace

void ImmortalizerChangedCallback()
{
    UpdateImmortalizerCache();
    dispatch_async(dispatch_get_main_queue(), refreshImmortalApplications);
}

} // namespace appledger
