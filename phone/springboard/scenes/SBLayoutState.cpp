#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

constexpr NSInteger primaryRole = 1;

/// What stood on the screen at one moment.
class SBLayoutState : public NSObject {
public:
    id primaryElement;

    id elementWithRole(NSInteger role) const { return role == primaryRole ? primaryElement : nil; }
};

constexpr MethodDefinition methods[] {
    method<"elementWithRole:", &SBLayoutState::elementWithRole>(),
    setter<"setPrimaryElement:", &SBLayoutState::primaryElement>(),
};

} // namespace

extern const ClassDefinition SBLayoutState_class {
    .name = "SBLayoutState", .allocate = allocate<SBLayoutState>, .methods = methods
};

} // namespace phone
