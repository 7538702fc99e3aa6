#include "phone/control/device.h"

#include "phone/backboard/brightness.h"
#include "phone/control/request_rows.h"
#include "phone/device/interface_style.h"
#include "phone/device/levels.h"
#include "phone/springboard/idle_timer/idle_timer.h"
#include "phone/springboard/levels/volume_hud.h"
#include "platform/dispatch/clock.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

Json changeLevel(const Json& request, void (*change)(double level))
{
    if (const auto level = request.find("level"); level != request.end() && level->is_number()) {
        change(level->get<double>());
        if (!unkeptLevels().empty())
            return failure(unkeptLevels());
    }
    return { { "ok", true }, { "device", deviceState() }, { "journal", toJson(takeJournal()) } };
}

Json changeVolume(const Json& request)
{
    return changeLevel(request, turnVolumeTo);
}

Json changeBrightness(const Json& request)
{
    return changeLevel(request, turnBrightnessTo);
}

/// "appearance": what the owner has chosen, after "style", "dark" or "light", is made it.
Json changeAppearance(const Json& request)
{
    const std::string style = text(request, "style");
    if (!style.empty() && !setInterfaceStyle(style == "dark" ? InterfaceStyle::Dark : InterfaceStyle::Light))
        return failure("the choice can't be kept");
    return { { "ok", true }, { "appearance", interfaceStyle() == InterfaceStyle::Dark ? "dark" : "light" } };
}

constexpr RequestRow rows[] {
    { "appearance", changeAppearance },
    { "volume", changeVolume },
    { "brightness", changeBrightness },
};

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

extern const RequestRows deviceRequests { rows };

void turnVolumeTo(double level)
{
    const id controller = send<"sharedAVSystemController">(id(classNamed<"AVSystemController">()));
    send<"setVolumeTo:forCategory:", bool>(controller, static_cast<float>(level), string("Audio/Video"));
    settle();
}

void turnBrightnessTo(double level)
{
    send<"setBrightness:", void>(send<"mainScreen">(id(classNamed<"UIScreen">())), level);
    settle();
}

} // namespace phone
