#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What lays the icons of the model out.
class SBHIconManager : public NSObject {
public:
    id iconModel;
};

constexpr MethodDefinition methods[] {
    getter<"iconModel", &SBHIconManager::iconModel>(),
    setter<"setIconModel:", &SBHIconManager::iconModel>(),
};

} // namespace

extern const ClassDefinition SBHIconManager_class {
    .name = "SBHIconManager", .allocate = allocate<SBHIconManager>, .methods = methods, .versions = { .first = 13 }
};

} // namespace phone
