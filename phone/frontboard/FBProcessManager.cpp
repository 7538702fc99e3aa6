#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The processes of the applications that run.
class FBProcessManager : public NSObject {
public:
    id processForBundleIdentifier(const id& identifier) const { return send<"objectForKey:">(processes_, identifier); }

    id launch(const id& identifier)
    {
        if (id running = processForBundleIdentifier(identifier))
            return running;
        id process = send<"new">(id(classNamed<"FBProcess">()));
        send<"setBundleIdentifier:", void>(process, identifier);
        send<"setObject:forKey:", void>(processes_, process, identifier);
        return process;
    }

    void processDidExit(const id& process)
    {
        journal(JournalEvent::Ran, "FBProcessManager processDidExit:");
        if (const id identifier = send<"bundleIdentifier">(process))
            send<"removeObjectForKey:", void>(processes_, identifier);
    }

private:
    const id processes_ = mutableDictionary();
};

id sharedInstance(const id& self, SEL)
{
    static NSObject* const manager = send<"new">(self).leak();
    return manager;
}

constexpr MethodDefinition methods[] {
    method<"launchProcessWithBundleIdentifier:", &FBProcessManager::launch>(),
    method<"processDidExit:", &FBProcessManager::processDidExit>(),
    method<"processForBundleIdentifier:", &FBProcessManager::processForBundleIdentifier>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition FBProcessManager_class {
    .name = "FBProcessManager", .allocate = allocate<FBProcessManager>, .methods = methods
};

} // namespace phone
