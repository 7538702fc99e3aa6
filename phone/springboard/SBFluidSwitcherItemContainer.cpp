#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// A card of the switcher.
class SBFluidSwitcherItemContainer : public NSObject {
public:
    id appLayout;
};

constexpr MethodDefinition methods[] {
    getter<"appLayout", &SBFluidSwitcherItemContainer::appLayout>(),
    setter<"setAppLayout:", &SBFluidSwitcherItemContainer::appLayout>(),
};

} // namespace

extern const ClassDefinition SBFluidSwitcherItemContainer_class {
    .name = "SBFluidSwitcherItemContainer", .allocate = allocate<SBFluidSwitcherItemContainer>, .methods = methods
};

} // namespace phone
