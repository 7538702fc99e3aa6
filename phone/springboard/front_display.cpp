#include "phone/springboard/front_display.h"

#include "phone/frontboard/scene_settings.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <utility>

namespace phone {

using namespace platform;

namespace {

id& inFront()
{
    static auto* const application = new id;
    return *application;
}

id springBoard()
{
    return send<"sharedApplication">(id(classNamed<"SpringBoard">()));
}

id sceneManager()
{
    return send<"sharedInstance">(id(classNamed<"SBMainDisplaySceneManager">()));
}

void updateScene(const id& application, bool foreground, const id& context)
{
    const id scene = send<"sceneForApplication:">(sceneManager(), application);
    send<"updateSettings:withTransitionContext:completion:", void>(scene, makeSceneSettings(foreground), context, nil);
}

void tellProcessState(const id& application)
{
    send<"_handleApplicationProcessStateDidChangeNotification:", void>(
        springBoard(), notification("SBApplicationProcessStateDidChangeNotification", application));
}

} // namespace

id applicationInFront()
{
    return inFront();
}

void bringToFront(const id& application)
{
    const id former = std::exchange(inFront(), application);
    if (application) {
        send<"setProcessState:", void>(application, string("running"));
        updateScene(application, true, nil);
        tellProcessState(application);
    }
    send<"frontDisplayDidChange:", void>(springBoard(), application);
    if (former && former != application) {
        updateScene(former, false, nil);
        tellProcessState(former);
    }
}

void startInBackground(const id& application, const id& context)
{
    if (application == inFront())
        return;
    send<"setProcessState:", void>(application, string("running"));
    updateScene(application, false, context);
    tellProcessState(application);
}

void applicationDidExit(const id& application)
{
    const bool wasInFront = application == inFront();
    send<"setProcessState:", void>(application, nil);
    send<"destroySceneForApplication:", void>(sceneManager(), application);
    if (wasInFront) {
        inFront() = nil;
        send<"frontDisplayDidChange:", void>(springBoard(), nil);
    }
    tellProcessState(application);
}

} // namespace phone
