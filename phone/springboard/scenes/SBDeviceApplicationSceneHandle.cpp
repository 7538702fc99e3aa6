#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// SpringBoard's hold on the scene of an application.
class SBDeviceApplicationSceneHandle : public NSObject {
public:
    id application;
    NSUInteger deactivationReasons = 0; ///< as the settings gave them that were modified last

    void modifyApplicationSceneSettings(const id& settings, const id&, const id&)
    {
        deactivationReasons = ask<"deactivationReasons", NSUInteger>(settings).value_or(0);
    }
};

constexpr MethodDefinition methods[] {
    method<"_modifyApplicationSceneSettings:fromRequestContext:entity:",
        &SBDeviceApplicationSceneHandle::modifyApplicationSceneSettings>(),
    getter<"application", &SBDeviceApplicationSceneHandle::application>(),
    getter<"deactivationReasons", &SBDeviceApplicationSceneHandle::deactivationReasons>(),
    setter<"setApplication:", &SBDeviceApplicationSceneHandle::application>(),
};

} // namespace

extern const ClassDefinition SBDeviceApplicationSceneHandle_class {
    .name = "SBDeviceApplicationSceneHandle", .allocate = allocate<SBDeviceApplicationSceneHandle>, .methods = methods
};

} // namespace phone
