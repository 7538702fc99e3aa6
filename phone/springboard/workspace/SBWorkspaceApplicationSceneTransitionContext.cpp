#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

constexpr std::int64_t primaryRole = 1;

/// Where the scenes of a transition go.
class SBWorkspaceApplicationSceneTransitionContext : public NSObject {
public:
    id primaryEntity;
    id previousLayoutState;
    bool isBackground = false;

    /// The role comes as a number object.
    id entityForLayoutRole(const id& role) const { return asInteger(role) == primaryRole ? primaryEntity : nil; }
};

using Context = SBWorkspaceApplicationSceneTransitionContext;

constexpr MethodDefinition methods[] {
    method<"applicationSceneEntityForLayoutRole:", &Context::entityForLayoutRole>(),
    getter<"isBackground", &Context::isBackground>(),
    getter<"previousLayoutState", &Context::previousLayoutState>(),
    setter<"setBackground:", &Context::isBackground>(),
    setter<"setPreviousLayoutState:", &Context::previousLayoutState>(),
    setter<"setPrimaryEntity:", &Context::primaryEntity>(),
};

} // namespace

extern const ClassDefinition SBWorkspaceApplicationSceneTransitionContext_class {
    .name = "SBWorkspaceApplicationSceneTransitionContext", .allocate = allocate<Context>, .methods = methods
};

} // namespace phone
