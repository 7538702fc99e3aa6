#include "phone/device/levels.h"
#include "phone/system/journal.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The door to the media server, which has one category of volume.
bool isMediaCategory(const id& category)
{
    const auto name = asString(category);
    return name && *name == "Audio/Video";
}

bool getVolume(const id&, SEL, float* volume, const id& category)
{
    if (!volume || !isMediaCategory(category))
        return false;
    *volume = static_cast<float>(hardwareLevel(HardwareLevel::MediaVolume));
    return true;
}

bool setVolume(const id& self, SEL, float volume, const id& category)
{
    if (!isMediaCategory(category))
        return false;
    journal(JournalEvent::Volume, asString(category)->view(), levelText(volume));
    setHardwareLevel(HardwareLevel::MediaVolume, volume);
    postLocalNotification("AVSystemController_SystemVolumeDidChangeNotification", self);
    return true;
}

id sharedController(const id& self, SEL)
{
    static NSObject* const controller = send<"new">(self).leak();
    return controller;
}

constexpr MethodDefinition methods[] {
    method<"getVolume:forCategory:", &getVolume>(),
    method<"setVolumeTo:forCategory:", &setVolume>(),
    classMethod<"sharedAVSystemController", &sharedController>(),
};

} // namespace

extern const ClassDefinition AVSystemController_class { .name = "AVSystemController", .methods = methods };

} // namespace phone
