#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// One scene in the layout of the screen.
class SBLayoutElement : public NSObject {
public:
    id uniqueIdentifier;
};

constexpr MethodDefinition methods[] {
    setter<"setUniqueIdentifier:", &SBLayoutElement::uniqueIdentifier>(),
    getter<"uniqueIdentifier", &SBLayoutElement::uniqueIdentifier>(),
};

} // namespace

extern const ClassDefinition SBLayoutElement_class {
    .name = "SBLayoutElement", .allocate = allocate<SBLayoutElement>, .methods = methods
};

} // namespace phone
