#include "phone/springboard/applications/application_process.h"

#include "phone/springboard/applications/applications.h"
#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id processManager()
{
    return send<"sharedInstance">(id(classNamed<"FBProcessManager">()));
}

} // namespace

void startProcessOf(const id& application)
{
    if (send<"processState">(application))
        return;
    send<"setProcessState:", void>(application, send<"new">(id(classNamed<"SBApplicationProcessState">())));
    send<"launchProcessWithBundleIdentifier:">(processManager(), send<"bundleIdentifier">(application));
}

bool endProcessOf(const std::string& bundleIdentifier)
{
    const id process = send<"processForBundleIdentifier:">(processManager(), string(bundleIdentifier));
    if (!process)
        return false;
    journal(JournalEvent::Sent, "FBProcess _processDidExitWithContext:");
    send<"_processDidExitWithContext:", void>(process, nil);
    send<"_didExitWithContext:", void>(applicationOrServiceNamed(bundleIdentifier), nil);
    return true;
}

} // namespace phone
