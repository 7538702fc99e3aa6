#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// Icons behind one icon.
class SBFolder : public NSObject {
public:
    id icon;
    id icons; ///< array
};

constexpr MethodDefinition methods[] {
    getter<"icon", &SBFolder::icon>(),
    getter<"icons", &SBFolder::icons>(),
    setter<"setIcon:", &SBFolder::icon>(),
    setter<"setIcons:", &SBFolder::icons>(),
};

} // namespace

extern const ClassDefinition SBFolder_class { .name = "SBFolder", .allocate = allocate<SBFolder>, .methods = methods };

} // namespace phone
