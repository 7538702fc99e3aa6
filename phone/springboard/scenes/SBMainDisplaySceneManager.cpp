#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id makeScene(const id& identifier)
{
    const id process = send<"new">(id(classNamed<"FBProcess">()));
    send<"setBundleIdentifier:", void>(process, identifier);
    id scene = send<"new">(id(classNamed<"FBScene">()));
    send<"setClientProcess:", void>(scene, process);
    return scene;
}

/// The scenes of the applications that run.
class SBMainDisplaySceneManager : public NSObject {
public:
    /// Nil for an application without one.
    id existingSceneForApplication(const id& application) const
    {
        return pairsOf(scenes_)[send<"bundleIdentifier">(application)];
    }

    id sceneForApplication(const id& application)
    {
        const id identifier = send<"bundleIdentifier">(application);
        if (!pairsOf(scenes_)[identifier])
            send<"setObject:forKey:", void>(scenes_, makeScene(identifier), identifier);
        return pairsOf(scenes_)[identifier];
    }

    void destroySceneForApplication(const id& application)
    {
        send<"removeObjectForKey:", void>(scenes_, send<"bundleIdentifier">(application));
    }

private:
    const id scenes_ = mutableDictionary();
};

/// The notification server has to know who is in front.
void noteDidChangeToVisibility(const id&, SEL, NSUInteger visibility, bool, const id& scene)
{
    // As the system numbers them.
    constexpr NSUInteger visibleInForeground = 2;
    constexpr unsigned stateInBackground = 4;
    constexpr unsigned stateInForeground = 8;
    if (!isKindOfClass(scene, classNamed<"FBScene">()))
        return;
    const id server = askObject<"sharedInstance">(id(classNamed<"UNSUserNotificationServer">()));
    ask<"_didChangeApplicationState:forBundleIdentifier:", void>(server,
        visibility == visibleInForeground ? stateInForeground : stateInBackground,
        send<"bundleIdentifier">(send<"clientProcess">(scene)));
}

id sharedInstance(const id& self, SEL)
{
    static NSObject* const manager = send<"new">(self).leak();
    return manager;
}

constexpr MethodDefinition methods[] {
    method<"_noteDidChangeToVisibility:previouslyExisted:forScene:", &noteDidChangeToVisibility>(),
    method<"destroySceneForApplication:", &SBMainDisplaySceneManager::destroySceneForApplication>(),
    method<"existingSceneForApplication:", &SBMainDisplaySceneManager::existingSceneForApplication>(),
    method<"sceneForApplication:", &SBMainDisplaySceneManager::sceneForApplication>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBMainDisplaySceneManager_class {
    .name = "SBMainDisplaySceneManager", .allocate = allocate<SBMainDisplaySceneManager>, .methods = methods
};

} // namespace phone
