#pragma once

#include "phone/control/device.h"
#include "phone/device/levels.h"
#include "phone/process/system_images.h"
#include "phone/springboard/idle_timer/idle_timer.h"
#include "phone/springboard/scenes/front_display.h"
#include "platform/dispatch/clock.h"
#include "platform/runtime/message.h"
#include "state/app_brightness_manager.h"
#include "state/app_mute_manager.h"
#include "support/phone_fixture.h"

#include <map>

namespace support {

/// Which applications change the device while they are in front.
struct FrontPolicies {
    std::vector<std::string> muted {};
    std::map<std::string, double> brightness {};
    std::vector<std::string> keptAwake {};
};

enum class Injection { Library, None };

/// SpringBoard with six applications, "a" to "f", the clock held, and the device at volume 0.8 and brightness 0.6.
class FrontPhone {
public:
    explicit FrontPhone(const FrontPolicies& policies, const char* version = "16.0",
        Injection injection = Injection::Library, std::vector<std::string> absentClasses = {})
        : phone_("SpringBoard", version, std::move(absentClasses))
    {
        platform::holdClock();
        phone::declareSystemImages(platform::processFacts().version);
        phone_.with({ "a", "b", "c", "d", "e", "f" });
        for (const std::string& application : policies.muted)
            EXPECT_EQ(appledger::writeMuted(application, true).problem, "");
        for (const auto& [application, level] : policies.brightness)
            EXPECT_EQ(appledger::writeBrightness(application, level).problem, "");
        std::vector<platform::id> awake;
        for (const std::string& application : policies.keptAwake)
            awake.push_back(platform::string(application));
        phone_.device.writeDomain({ { "ALKeepAwakeApps", platform::array(std::move(awake)) } });
        if (injection == Injection::Library)
            phone_.inject();
        phone_.start();
        phone::turnVolumeTo(0.8);
        phone::turnBrightnessTo(0.6);
        journal();
    }

    static platform::id application(const std::string& identifier)
    {
        const platform::id controller
            = platform::send<"sharedInstance">(platform::id(platform::objc_getClass("SBApplicationController")));
        return platform::send<"applicationWithBundleIdentifier:">(controller, platform::string(identifier));
    }

    static platform::id springBoard()
    {
        return platform::send<"sharedApplication">(platform::id(platform::objc_getClass("SpringBoard")));
    }

    /// SpringBoard hears of the display, as when that application, or for "" none, is in front.
    static void display(const std::string& identifier)
    {
        platform::send<"frontDisplayDidChange:", void>(
            springBoard(), identifier.empty() ? platform::nil : application(identifier));
    }

    static void visibility(const std::string& identifier, platform::NSUInteger value)
    {
        const platform::id manager
            = platform::send<"sharedInstance">(platform::id(platform::objc_getClass("SBMainDisplaySceneManager")));
        const platform::id scene = platform::send<"sceneForApplication:">(manager, application(identifier));
        platform::send<"_noteDidChangeToVisibility:previouslyExisted:forScene:", void>(manager, value, true, scene);
    }

    /// What the queued work makes of the events so far.
    std::string journal(std::chrono::nanoseconds time = {})
    {
        platform::advanceClock(time);
        return phone_.journal();
    }

    /// Volume, brightness and what keeps the screen awake: "0.80 0.60 AppLedger_KeepAwake".
    std::string state(std::chrono::nanoseconds time = {})
    {
        journal(time);
        std::string text = phone::levelText(phone::hardwareLevel(phone::HardwareLevel::MediaVolume)) + " "
            + phone::levelText(phone::hardwareLevel(phone::HardwareLevel::Brightness));
        for (const std::string& reason : phone::idleTimerAssertions())
            text += " " + reason;
        return text;
    }

    const TemporaryDevice& device() const noexcept { return phone_.device; }

private:
    Phone phone_;
};

} // namespace support
