#include "scenario/command.h"

#include <filesystem>
#include <gtest/gtest.h>

/// Volume, brightness and wakefulness of applications, from the command to a phone of real processes and back.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* mail = "com.example.mail";
constexpr const char* chat = "com.example.chat";

/// Volume, brightness, and what keeps the screen awake.
std::string state(const Json& report)
{
    char text[64];
    const Json& device = report["device"];
    std::snprintf(text, sizeof text, "%.2f %.2f", device["volume"].get<double>(), device["brightness"].get<double>());
    std::string state = text;
    for (const Json& reason : device["assertions"])
        state += " " + reason.get<std::string>();
    return state;
}

void setUp(const Phone& phone)
{
    phone.answer({ "policy", "mute", notes });
    phone.answer({ "policy", "mute", mail });
    EXPECT_EQ(phone.answer({ "policy", "brightness", notes, "0.25" })["posted"], false);
    phone.answer({ "policy", "brightness", mail, "100%" });
    phone.answer({ "policy", "brightness", mail, "7" }, 2);
    phone.answer({ "policy", "add", "ALKeepAwakeApps", notes });
    phone.answer({ "policy", "brightness", notes, "bright" }, 2);
}

} // namespace

TEST(FrontApplicationScenario, TheDeviceFollowsWhatIsInFront)
{
    const Phone phone;
    setUp(phone);
    phone.answer({ "phone", "up" });
    EXPECT_EQ(state(phone.answer({ "phone", "volume", "0.75" })), "0.75 0.50");
    EXPECT_EQ(phone.answer({ "phone", "status" })["device"]["hud"]["volume"], 0.75);
    EXPECT_EQ(state(phone.answer({ "phone", "launch", notes })), "0.00 0.25 AppLedger_KeepAwake");
    EXPECT_EQ(phone.answer({ "phone", "status" })["device"]["hud"]["volume"], 0.75) << "the change shows nowhere";
    EXPECT_EQ(state(phone.answer({ "phone", "launch", notes })), "0.00 0.25 AppLedger_KeepAwake");
    EXPECT_EQ(state(phone.answer({ "phone", "launch", mail })), "0.00 1.00");
    EXPECT_EQ(state(phone.answer({ "phone", "launch", chat })), "0.75 0.50");
    EXPECT_EQ(state(phone.answer({ "phone", "launch", notes })), "0.00 0.25 AppLedger_KeepAwake");
    EXPECT_EQ(state(phone.answer({ "phone", "home" })), "0.75 0.50");

    EXPECT_EQ(phone.answer({ "policy", "show", notes })["policies"],
        (Json { { "ALKeepAwakeApps", true }, { "brightness", 0.25 }, { "mute", true } }));
    phone.answer({ "policy", "unmute", notes });
    EXPECT_EQ(phone.answer({ "policy", "brightness", notes, "off" })["posted"], true);
    phone.answer({ "policy", "remove", "ALKeepAwakeApps", notes });
    EXPECT_EQ(phone.answer({ "policy", "show", notes })["policies"], Json::object());
    EXPECT_EQ(state(phone.answer({ "phone", "launch", notes })), "0.75 0.50");
    for (const char* const file : { "com.orbelix.appmute.plist", "com.orbelix.appbrightness.plist" })
        EXPECT_EQ(std::filesystem::status(phone.root() + "/var/mobile/Library/Preferences/" + file).permissions(),
            std::filesystem::perms::all)
            << file;
}

TEST(FrontApplicationScenario, ARestartOfSpringBoardForgetsWhatItWasToPutBack)
{
    const Phone phone;
    setUp(phone);
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "volume", "0.75" });
    EXPECT_EQ(state(phone.answer({ "phone", "launch", notes })), "0.00 0.25 AppLedger_KeepAwake");
    phone.answer({ "phone", "respring" });
    EXPECT_EQ(state(phone.answer({ "phone", "status" })), "0.00 0.25");
    phone.answer({ "phone", "launch", notes });
    EXPECT_EQ(state(phone.answer({ "phone", "home" })), "0.50 0.25");
}

TEST(FrontApplicationScenario, AStockPhoneHasOneVolumeForAll)
{
    const Phone phone;
    setUp(phone);
    phone.answer({ "phone", "up", "--stock" });
    EXPECT_EQ(state(phone.answer({ "phone", "launch", notes })), "0.50 0.50");
}

} // namespace scenario
