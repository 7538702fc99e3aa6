#include "phone/springboard/transitions.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// What is in front now, as the request's context remembers it.
id currentLayoutState(const id& workspace)
{
    const id front = send<"frontmostApplication">(workspace);
    if (!front)
        return nil;
    const id element = send<"new">(id(classNamed<"SBLayoutElement">()));
    const auto identifier = asString(send<"bundleIdentifier">(front));
    send<"setUniqueIdentifier:", void>(element, string("sceneID:" + identifier->text() + "-default"));
    id state = send<"new">(id(classNamed<"SBLayoutState">()));
    send<"setPrimaryElement:", void>(state, element);
    return state;
}

id makeEntity(const id& application)
{
    id entity = send<"new">(id(classNamed<"SBDeviceApplicationSceneEntity">()));
    send<"setApplication:", void>(entity, application);
    return entity;
}

id makeProcess(const TransitionDescription& description)
{
    id process = send<"new">(id(classNamed<"FBProcess">()));
    send<"setName:", void>(process, string(description.requesterName));
    if (!description.requesterBundleIdentifier.empty())
        send<"setBundleIdentifier:", void>(process, string(description.requesterBundleIdentifier));
    return process;
}

} // namespace

id makeTransitionRequest(const TransitionDescription& description)
{
    const id workspace = send<"sharedInstance">(id(classNamed<"SBMainWorkspace">()));
    std::vector<id> entities;
    for (const id& application : description.applications)
        entities.push_back(makeEntity(application));

    const id context = send<"new">(id(classNamed<"SBWorkspaceApplicationSceneTransitionContext">()));
    if (!entities.empty())
        send<"setPrimaryEntity:", void>(context, entities.front());
    send<"setPreviousLayoutState:", void>(context, currentLayoutState(workspace));

    id request = send<"new">(id(classNamed<"SBMainWorkspaceTransitionRequest">()));
    send<"setEventLabel:", void>(request, string(description.label));
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
