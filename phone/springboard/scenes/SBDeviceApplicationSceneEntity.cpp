#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

extern const ClassDefinition SBApplicationSceneEntity_class;
extern const ClassDefinition SBDeviceApplicationSceneEntity_class { .name = "SBDeviceApplicationSceneEntity",
    .superclass = &SBApplicationSceneEntity_class };

} // namespace phone
