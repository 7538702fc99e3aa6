#include "phone/springboard/start.h"

#include "phone/device/interface_style.h"
#include "phone/device/removed_applications.h"
#include "phone/frontboard/open_request.h"
#include "phone/springboard/applications/applications.h"
#include "phone/springboard/applications/termination_assertion.h"
#include "phone/springboard/icons/installations.h"
#include "phone/springboard/levels/volume_hud.h"
#include "phone/springboard/workspace/transitions.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <cstdio>

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
    for (const std::string& stayed : finishRemovals())
        std::fprintf(stderr, "of a removed application stays %s\n", stayed.c_str());
    followInstallations();
    enforceTerminationAssertions();
    showInterfaceStyle();
    startVolumeControl();
    const id application = send<"sharedApplication">(id(classNamed<"SpringBoard">()));
    send<"applicationDidFinishLaunching:", void>(application, nil);
    ask<"_loadBulletins", void>(askObject<"sharedServer">(id(classNamed<"BBServer">())));
}

} // namespace phone
