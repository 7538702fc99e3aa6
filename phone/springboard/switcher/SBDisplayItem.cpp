#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// One application in a card of the switcher.
class SBDisplayItem : public NSObject {
public:
    id bundleIdentifier;
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifier", &SBDisplayItem::bundleIdentifier>(),
    setter<"setBundleIdentifier:", &SBDisplayItem::bundleIdentifier>(),
};

} // namespace

extern const ClassDefinition SBDisplayItem_class {
    .name = "SBDisplayItem", .allocate = allocate<SBDisplayItem>, .methods = methods
};

} // namespace phone
