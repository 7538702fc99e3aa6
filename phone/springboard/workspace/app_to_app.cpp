#include "phone/springboard/workspace/app_to_app.h"

#include "phone/springboard/applications/applications.h"
#include "phone/springboard/workspace/transitions.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id actionsOf(AppToAppAction action)
{
    switch (action) {
    case AppToAppAction::OpenUrl:
        return set({ send<"new">(id(classNamed<"UIOpenURLAction">())) });
    case AppToAppAction::ContinueActivity:
        return set({ send<"new">(id(classNamed<"UIActivityContinuationAction">())) });
    case AppToAppAction::None:
        break;
    }
    return nil;
}

} // namespace

AppToAppAnswer openFromApplication(const AppToAppTransition& transition)
{
    const id destination = applicationOrServiceNamed(transition.destination);
    if (!destination)
        return { .asked = AppToAppAnswer::Asked::NobodyForUnknownDestination };
    TransitionDescription description { .applications = { destination },
        .label = transition.label,
        .requesterName = transition.requesterName,
        .requesterBundleIdentifier = transition.requesterBundleIdentifier,
        .previousScene = transition.previousScene };
    if (const auto& source = transition.source) {
        const id application = source->bundleIdentifier ? applicationOrServiceNamed(*source->bundleIdentifier) : nil;
        if (source->bundleIdentifier && !application)
            return { .asked = AppToAppAnswer::Asked::NobodyForUnknownSource };
        description.sourceEntity = makeSceneEntity(application, actionsOf(source->action));
    }
    const id request = makeTransitionRequest(description);
    const id workspace = send<"sharedInstance">(id(classNamed<"SBMainWorkspace">()));
    AppToAppAnswer answer { .executed = send<"executeTransitionRequest:", bool>(workspace, request) };
    answer.wentToBackground = send<"isBackground", bool>(send<"applicationContext">(request));
    if (const auto reason = asString(send<"declineReason">(request)))
        answer.reason = reason->text();
    return answer;
}

} // namespace phone
