#include "phone/springboard/icons/icon_model.h"

namespace phone {

using namespace platform;

extern const ClassDefinition SBIconModel_class {
    .name = "SBIconModel", .allocate = allocate<IconModel>, .methods = iconModelMethods, .versions = { .last = 12 }
};

} // namespace phone
