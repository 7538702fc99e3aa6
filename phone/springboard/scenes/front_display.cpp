#include "phone/springboard/scenes/front_display.h"

#include "phone/frontboard/scene_settings.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/switcher/switcher.h"
#include "phone/springboard/workspace/transitions.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace phone {

using namespace platform;

namespace {

/// The primary one first; none on the Home Screen.
std::vector<id>& inFront()
{
    static auto* const applications = new std::vector<id>;
    return *applications;
}

bool contains(const std::vector<id>& applications, const id& application)
{
    return std::ranges::find(applications, application) != applications.end();
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
    return inFront().empty() ? nil : inFront().front();
}

void bringToFront(const id& application)
{
    bringCardToFront(application ? std::vector { application } : std::vector<id> {});
}

void bringCardToFront(const std::vector<id>& applications)
{
    const std::vector<id> left = std::exchange(inFront(), applications);
    addCard(applications);
    // The primary one last: who goes by the latest word then knows who is in front.
    for (const id& application : applications | std::views::reverse) {
        startProcessOf(application);
        updateScene(application, true, nil);
        tellProcessState(application);
    }
    send<"frontDisplayDidChange:", void>(springBoard(), applicationInFront());
    for (const id& former : left) {
        if (contains(applications, former))
            continue;
        updateScene(former, false, nil);
        tellProcessState(former);
    }
}

void startInBackground(const id& application, const id& context)
{
    if (contains(inFront(), application))
        return;
    startProcessOf(application);
    updateScene(application, false, context);
    tellProcessState(application);
}

void applicationDidExit(const id& application)
{
    const bool wasPrimary = application && application == applicationInFront();
    std::erase(inFront(), application);
    send<"setProcessState:", void>(application, nil);
    send<"destroySceneForApplication:", void>(sceneManager(), application);
    constexpr unsigned stateTerminated = 1; // as the system numbers it
    const id server = askObject<"sharedInstance">(id(classNamed<"UNSUserNotificationServer">()));
    ask<"_didChangeApplicationState:forBundleIdentifier:", void>(
        server, stateTerminated, send<"bundleIdentifier">(application));
    if (wasPrimary)
        send<"frontDisplayDidChange:", void>(springBoard(), applicationInFront());
    tellProcessState(application);
}

} // namespace phone
