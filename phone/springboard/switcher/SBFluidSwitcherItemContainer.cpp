#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// A card of the switcher.
class SBFluidSwitcherItemContainer : public NSObject {
public:
    id appLayout;
    bool killable = false;
};

constexpr MethodDefinition methods[] {
    getter<"appLayout", &SBFluidSwitcherItemContainer::appLayout>(),
    getter<"isKillable", &SBFluidSwitcherItemContainer::killable>(),
    setter<"setAppLayout:", &SBFluidSwitcherItemContainer::appLayout>(),
    setter<"setKillable:", &SBFluidSwitcherItemContainer::killable>(),
};

} // namespace

extern const ClassDefinition SBFluidSwitcherItemContainer_class {
    .name = "SBFluidSwitcherItemContainer", .allocate = allocate<SBFluidSwitcherItemContainer>, .methods = methods
};

} // namespace phone
