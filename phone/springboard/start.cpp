#include "phone/springboard/start.h"

#include "phone/control/requests.h"
#include "phone/frontboard/open_request.h"
#include "phone/springboard/applications.h"
#include "phone/springboard/transitions.h"
#include "phone/springboard/volume_hud.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

bool openInWorkspace(const OpenRequest& request)
{
    const id application = applicationNamed(request.bundleIdentifier);
    if (!application)
        return false;
    TransitionDescription transition { .applications = { application }, .label = {} };
    if (!request.requesterName.empty()) {
        transition.requesterName = request.requesterName;
        transition.requesterBundleIdentifier = request.requesterBundleIdentifier;
    }
    const std::string label
        = "OpenApplication(" + request.bundleIdentifier + ")ForRequester(" + transition.requesterName + ")";
    transition.label = label;
    return requestTransition(transition);
}

} // namespace

void startSpringBoard()
{
    setOpenApplicationHandler(openInWorkspace);
    startVolumeControl();
    const id application = send<"sharedApplication">(id(classNamed<"SpringBoard">()));
    send<"applicationDidFinishLaunching:", void>(application, nil);
}

void openThroughSpringBoard()
{
    setOpenApplicationHandler([](const OpenRequest& request) { return forwardOpenRequest(request); });
}

} // namespace phone
