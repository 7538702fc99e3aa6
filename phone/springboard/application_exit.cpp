#include "phone/springboard/application_exit.h"

#include "phone/process/journal.h"
#include "phone/springboard/roads.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

bool endProcessOf(const std::string& bundleIdentifier)
{
    const id identifier = string(bundleIdentifier);
    const id processes = send<"sharedInstance">(id(classNamed<"FBProcessManager">()));
    const id process = send<"processForBundleIdentifier:">(processes, identifier);
    if (!process)
        return false;
    journal(JournalEvent::Sent, "FBProcess _processDidExitWithContext:");
    send<"_processDidExitWithContext:", void>(process, nil);
    const id controller = send<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    send<"setProcessState:", void>(send<"applicationWithBundleIdentifier:">(controller, identifier), nil);
    if (frontmostApplication() == bundleIdentifier)
        pressHome();
    return true;
}

} // namespace phone
