#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// SpringBoard's hold on the scene of an application.
class SBDeviceApplicationSceneHandle : public NSObject {
public:
    id application;
};

void modifyApplicationSceneSettings(const id&, SEL, const id&, const id&, const id&) { }

constexpr MethodDefinition methods[] {
    method<"_modifyApplicationSceneSettings:fromRequestContext:entity:", &modifyApplicationSceneSettings>(),
    getter<"application", &SBDeviceApplicationSceneHandle::application>(),
    setter<"setApplication:", &SBDeviceApplicationSceneHandle::application>(),
};

} // namespace

extern const ClassDefinition SBDeviceApplicationSceneHandle_class {
    .name = "SBDeviceApplicationSceneHandle", .allocate = allocate<SBDeviceApplicationSceneHandle>, .methods = methods
};

} // namespace phone
