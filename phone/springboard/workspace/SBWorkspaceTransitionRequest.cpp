#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// A request to the workspace to bring scenes to front.
class SBWorkspaceTransitionRequest : public NSObject {
public:
    id eventLabel;
    id applicationContext;
    id originatingProcess;
    id fromApplicationSceneEntities;
    id toApplicationSceneEntities;
    id declineReason;
};

constexpr MethodDefinition methods[] {
    getter<"applicationContext", &SBWorkspaceTransitionRequest::applicationContext>(),
    getter<"declineReason", &SBWorkspaceTransitionRequest::declineReason>(),
    setter<"declineWithReason:", &SBWorkspaceTransitionRequest::declineReason>(),
    getter<"eventLabel", &SBWorkspaceTransitionRequest::eventLabel>(),
    getter<"fromApplicationSceneEntities", &SBWorkspaceTransitionRequest::fromApplicationSceneEntities>(),
    getter<"originatingProcess", &SBWorkspaceTransitionRequest::originatingProcess>(),
    setter<"setApplicationContext:", &SBWorkspaceTransitionRequest::applicationContext>(),
    setter<"setEventLabel:", &SBWorkspaceTransitionRequest::eventLabel>(),
    setter<"setFromApplicationSceneEntities:", &SBWorkspaceTransitionRequest::fromApplicationSceneEntities>(),
    setter<"setOriginatingProcess:", &SBWorkspaceTransitionRequest::originatingProcess>(),
    setter<"setToApplicationSceneEntities:", &SBWorkspaceTransitionRequest::toApplicationSceneEntities>(),
    getter<"toApplicationSceneEntities", &SBWorkspaceTransitionRequest::toApplicationSceneEntities>(),
};

} // namespace

extern const ClassDefinition SBWorkspaceTransitionRequest_class {
    .name = "SBWorkspaceTransitionRequest", .allocate = allocate<SBWorkspaceTransitionRequest>, .methods = methods
};

} // namespace phone
