#include "phone/springboard/scenes/front_display.h"

#include "phone/frontboard/scene_settings.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/switcher/switcher.h"
#include "phone/springboard/workspace/transitions.h"
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

id sceneHandle(const id& application)
{
    id handle = send<"new">(id(classNamed<"SBDeviceApplicationSceneHandle">()));
    send<"setApplication:", void>(handle, application);
    return handle;
}

void updateScene(const id& application, bool foreground, const id& context)
{
    const id settings = makeSceneSettings(foreground);
    const id entity = makeSceneEntity(application);
    send<"_setupSceneSettings:transitionContext:", void>(entity, settings, context);
    send<"_modifyApplicationSceneSettings:fromRequestContext:entity:", void>(
        sceneHandle(application), settings, context, entity);
    const id scene = send<"sceneForApplication:">(sceneManager(), application);
    send<"updateSettings:withTransitionContext:completion:", void>(scene, settings, context, nil);
}

void tellProcessState(const id& application)
{
    send<"_handleApplicationProcessStateDidChangeNotification:", void>(
        springBoard(), notification("SBApplicationProcessStateDidChangeNotification", application));
}

} // namespace

bool isSceneInForeground(const id& application)
{
    return isForeground(send<"settings">(send<"existingSceneForApplication:">(sceneManager(), application)));
}

id applicationInFront()
{
    return inFront();
}

void bringToFront(const id& application)
{
    const id former = std::exchange(inFront(), application);
    if (application) {
        addCard(application);
        startProcessOf(application);
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
    startProcessOf(application);
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
