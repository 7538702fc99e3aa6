#include "phone/springboard/workspace/transitions.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

std::optional<std::string> sceneInFront(const id& workspace)
{
    const auto identifier = asString(askObject<"bundleIdentifier">(send<"frontmostApplication">(workspace)));
    return identifier ? std::optional("sceneID:" + identifier->text() + "-default") : std::nullopt;
}

/// What the request's context remembers of the screen before.
id layoutStateOf(std::optional<std::string_view> scene)
{
    if (!scene)
        return nil;
    const id element = send<"new">(id(classNamed<"SBLayoutElement">()));
    send<"setUniqueIdentifier:", void>(element, string(*scene));
    id state = send<"new">(id(classNamed<"SBLayoutState">()));
    send<"setPrimaryElement:", void>(state, element);
    return state;
}

id makeProcess(const TransitionDescription& description)
{
    id process = send<"new">(id(classNamed<"FBProcess">()));
    if (!description.requesterName.empty())
        send<"setName:", void>(process, string(description.requesterName));
    if (!description.requesterBundleIdentifier.empty())
        send<"setBundleIdentifier:", void>(process, string(description.requesterBundleIdentifier));
    return process;
}

} // namespace

id makeSceneEntity(const id& application, const id& actions)
{
    id entity = send<"new">(id(classNamed<"SBDeviceApplicationSceneEntity">()));
    send<"setApplication:", void>(entity, application);
    send<"setActions:", void>(entity, actions);
    return entity;
}

id makeTransitionRequest(const TransitionDescription& description)
{
    const id workspace = send<"sharedInstance">(id(classNamed<"SBMainWorkspace">()));
    std::vector<id> entities;
    for (const id& application : description.applications)
        entities.push_back(makeSceneEntity(application));

    const id context = send<"new">(id(classNamed<"SBWorkspaceApplicationSceneTransitionContext">()));
    if (!entities.empty())
        send<"setPrimaryEntity:", void>(context, entities.front());
    const auto inFront = sceneInFront(workspace);
    send<"setPreviousLayoutState:", void>(
        context, layoutStateOf(description.previousScene ? description.previousScene : inFront));

    id request = send<"new">(id(classNamed<"SBMainWorkspaceTransitionRequest">()));
    if (description.label)
        send<"setEventLabel:", void>(request, string(*description.label));
    if (description.sourceEntity)
        send<"setFromApplicationSceneEntities:", void>(request, set({ description.sourceEntity }));
    send<"setApplicationContext:", void>(request, context);
    send<"setOriginatingProcess:", void>(request, makeProcess(description));
    send<"setToApplicationSceneEntities:", void>(request, set(std::move(entities)));
    return request;
}

bool requestTransition(const TransitionDescription& description)
{
    const id workspace = send<"sharedInstance">(id(classNamed<"SBMainWorkspace">()));
    return send<"executeTransitionRequest:", bool>(workspace, makeTransitionRequest(description));
}

} // namespace phone
