#include "phone/device/levels.h"
#include "phone/springboard/levels/volume_hud.h"
#include "phone/system/journal.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

std::optional<VolumeHUDShowing> lastShowing;

void present(double volume)
{
    const id mediaController = send<"sharedInstance">(id(classNamed<"SBMediaController">()));
    if (send<"suppressHUD", bool>(mediaController))
        return;
    journal(JournalEvent::VolumeHUD, levelText(volume));
    lastShowing = { volume, clockNow() };
}

void presentWithVolume(const id&, SEL, float volume)
{
    present(volume);
}

void presentIfDisplayable(const id&, SEL, bool displayable, const id&)
{
    if (displayable)
        present(hardwareLevel(HardwareLevel::MediaVolume));
}

id sharedInstance(const id& self, SEL)
{
    static NSObject* const control = send<"new">(self).leak();
    return control;
}

void volumeDidChange()
{
    const id control = send<"sharedInstance">(id(classNamed<"SBVolumeControl">()));
    if (!ask<"_presentVolumeHUDIfDisplayable:orRefreshIfPresentedWithReason:", void>(
            control, true, string("VolumeChange")))
        send<"_presentVolumeHUDWithVolume:", void>(
            control, static_cast<float>(hardwareLevel(HardwareLevel::MediaVolume)));
}

constexpr MethodDefinition methods[] {
    method<"_presentVolumeHUDIfDisplayable:orRefreshIfPresentedWithReason:", &presentIfDisplayable>().since(14),
    method<"_presentVolumeHUDWithVolume:", &presentWithVolume>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBVolumeControl_class { .name = "SBVolumeControl", .methods = methods };

std::optional<VolumeHUDShowing> lastVolumeHUDShowing()
{
    return lastShowing;
}

void startVolumeControl()
{
    // The media server tells of a change after it is made.
    addLocalObserver("AVSystemController_SystemVolumeDidChangeNotification",
        [](std::string_view, const id&) { dispatch_async(dispatch_get_main_queue(), volumeDidChange); });
}

} // namespace phone
