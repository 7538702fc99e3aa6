#include "phone/system/journal.h"
#include "phone/system/text.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

// As the system numbers the states.
constexpr unsigned foreground = 8;

/// Decides whether a notification is shown: an application in the foreground is left to show its own.
class UNSUserNotificationServer : public NSObject {
public:
    void didChangeApplicationState(unsigned state, const id& identifier)
    {
        send<"setObject:forKey:", void>(states_, number(static_cast<int>(state)), identifier);
    }

    /// 0 for an application that it was never told of.
    unsigned applicationState(const id& identifier) const
    {
        return static_cast<unsigned>(asInteger(pairsOf(states_)[identifier]).value_or(0));
    }

    void willPresent(const id&, const id& identifier, const id& completion)
    {
        const bool shown = applicationState(identifier) != foreground;
        journal(
            JournalEvent::Note, textOf(identifier) + (shown ? ": notification shown" : ": notification left to it"));
        callBlock(completion, shown);
    }

private:
    const id states_ = mutableDictionary();
};

id sharedInstance(const id& self, SEL)
{
    static NSObject* const server = send<"new">(self).leak();
    return server;
}

constexpr MethodDefinition methods[] {
    method<"_applicationStateForBundleIdentifier:", &UNSUserNotificationServer::applicationState>(),
    method<"_didChangeApplicationState:forBundleIdentifier:", &UNSUserNotificationServer::didChangeApplicationState>(),
    classMethod<"sharedInstance", &sharedInstance>(),
    method<"willPresentNotification:forBundleIdentifier:withCompletionHandler:",
        &UNSUserNotificationServer::willPresent>(),
};

} // namespace

extern const ClassDefinition UNSUserNotificationServer_class {
    .name = "UNSUserNotificationServer", .allocate = allocate<UNSUserNotificationServer>, .methods = methods
};

} // namespace phone
