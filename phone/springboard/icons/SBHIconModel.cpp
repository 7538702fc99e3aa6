#include "phone/springboard/icons/icon_model.h"

namespace phone {

using namespace platform;

extern const ClassDefinition SBHIconModel_class {
    .name = "SBHIconModel", .allocate = allocate<IconModel>, .methods = iconModelMethods, .versions = { .first = 13 }
};

} // namespace phone
