#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// The applications that share one card of the switcher, the primary one first.
class SBAppLayout : public NSObject {
public:
    id bundleIdentifiers;

    bool containsItem(const id& identifier) const
    {
        const auto identifiers = asArray(bundleIdentifiers);
        return identifiers && identifiers->contains(identifier);
    }
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifiers", &SBAppLayout::bundleIdentifiers>(),
    method<"containsItemWithBundleIdentifier:", &SBAppLayout::containsItem>(),
    setter<"setBundleIdentifiers:", &SBAppLayout::bundleIdentifiers>(),
};

} // namespace

extern const ClassDefinition SBAppLayout_class {
    .name = "SBAppLayout", .allocate = allocate<SBAppLayout>, .methods = methods
};

} // namespace phone
