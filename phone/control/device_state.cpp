#include "phone/control/device_state.h"

#include "phone/backboard/brightness.h"
#include "phone/device/levels.h"
#include "phone/springboard/idle_timer/idle_timer.h"
#include "phone/springboard/levels/volume_hud.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

Json changeLevel(const Json& request, void (*change)(double level))
{
    takeJournal();
    if (const auto level = request.find("level"); level != request.end() && level->is_number()) {
        change(level->get<double>());
        runUntilIdle();
    }
    return { { "ok", true }, { "device", deviceState() }, { "journal", toJson(takeJournal()) } };
}

} // namespace

Json deviceState()
{
    Json hud;
    if (const auto showing = lastVolumeHUDShowing())
        hud = { { "volume", showing->volume },
            { "secondsAgo", std::chrono::duration<double>(clockNow() - showing->time).count() } };
    return { { "volume", hardwareLevel(HardwareLevel::MediaVolume) }, { "brightness", brightness() }, { "hud", hud },
        { "assertions", idleTimerAssertions() } };
}

Json volume(const Json& request)
{
    return changeLevel(request, [](double level) {
        const id controller = send<"sharedAVSystemController">(id(classNamed<"AVSystemController">()));
        send<"setVolumeTo:forCategory:", bool>(controller, static_cast<float>(level), string("Audio/Video"));
    });
}

Json brightness(const Json& request)
{
    return changeLevel(request,
        [](double level) { send<"setBrightness:", void>(send<"mainScreen">(id(classNamed<"UIScreen">())), level); });
}

} // namespace phone
