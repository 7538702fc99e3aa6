#include "phone/system/journal.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// A process as SpringBoard sees it.
class FBProcess : public NSObject {
public:
    id name;
    id bundleIdentifier;
    int pid = 0;

    void didExit(const id&)
    {
        journal(JournalEvent::Ran, "FBProcess _processDidExitWithContext:");
        const id manager = send<"sharedInstance">(id(classNamed<"FBProcessManager">()));
        journal(JournalEvent::Sent, "FBProcessManager processDidExit:");
        send<"processDidExit:", void>(manager, id(this));
    }
};

constexpr MethodDefinition methods[] {
    method<"_processDidExitWithContext:", &FBProcess::didExit>(),
    getter<"bundleIdentifier", &FBProcess::bundleIdentifier>(),
    getter<"name", &FBProcess::name>(),
    getter<"pid", &FBProcess::pid>(),
    setter<"setBundleIdentifier:", &FBProcess::bundleIdentifier>(),
    setter<"setName:", &FBProcess::name>(),
    setter<"setPid:", &FBProcess::pid>(),
};

} // namespace

extern const ClassDefinition FBProcess_class {
    .name = "FBProcess", .allocate = allocate<FBProcess>, .methods = methods
};

} // namespace phone
