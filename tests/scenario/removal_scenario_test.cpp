#include "scenario/command.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

/// Applications that leave a phone of real processes, what they leave behind, and what outlives a respring.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* mail = "com.example.mail";

bool isInstalled(const Phone& phone, const std::string& identifier)
{
    const Json report = phone.answer({ "phone", "icons" });
    for (const Json& icon : report["icons"])
        if (icon["application"] == identifier)
            return true;
    return false;
}

/// How many of its folders there are.
int foldersOf(const Phone& phone, const std::string& identifier)
{
    int count = 0;
    for (const char* const place : { "/var/containers/Bundle/Application", "/var/mobile/Containers/Data/Application" })
        for (const auto& entry : std::filesystem::recursive_directory_iterator(phone.root() + place)) {
            const std::string name = entry.path().filename();
            if (name != "Info.plist" && name != ".com.apple.mobile_container_manager.metadata.plist")
                continue;
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string content { std::istreambuf_iterator<char>(file), {} };
            count += content.find(identifier) != std::string::npos ? 1 : 0;
        }
    return count;
}

} // namespace

TEST(RemovalScenario, TheApplicationInFrontGoesWithAllThatWasItsAndStaysAway)
{
    const Phone phone;
    phone.answer({ "policy", "mute", notes });
    phone.answer({ "policy", "brightness", notes, "0.9" });
    phone.answer({ "policy", "add", "ALKeepAwakeApps", notes });
    phone.answer({ "policy", "add", "ALImmortalForegroundApps", notes });
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "volume", "0.75" });
    phone.answer({ "phone", "brightness", "0.25" });
    phone.answer({ "phone", "push", notes, "--badge", "3" });
    phone.answer({ "phone", "push", mail, "--badge", "4" });
    const Json opened = phone.answer({ "phone", "tap", notes })["device"];
    EXPECT_EQ(opened["volume"], 0.0);
    EXPECT_EQ(opened["assertions"].size(), 1U);

    EXPECT_EQ(phone.answer({ "phone", "uninstall", notes })["removed"], true);
    const Json status = phone.answer({ "phone", "status" });
    EXPECT_EQ(status["front"], "");
    EXPECT_EQ(status["device"]["volume"], 0.75);
    EXPECT_EQ(status["device"]["brightness"], 0.25);
    EXPECT_EQ(status["device"]["assertions"], Json::array());
    EXPECT_EQ(phone.answer({ "phone", "switcher" })["cards"], Json::array());
    EXPECT_EQ(phone.answer({ "phone", "notifications" })["notifications"].size(), 1U);
    EXPECT_EQ(phone.answer({ "phone", "describe" })["screen"].get<std::string>().find("Scribbles"), std::string::npos);
    phone.answer({ "phone", "exit", notes }, 1);
    EXPECT_EQ(phone.answer({ "phone", "push", notes }, 1)["error"], "no such application is installed");
    EXPECT_EQ(foldersOf(phone, notes), 0);

    phone.answer({ "phone", "down" });
    phone.answer({ "phone", "up" });
    EXPECT_FALSE(isInstalled(phone, notes));
    EXPECT_EQ(foldersOf(phone, notes), 0);
    EXPECT_TRUE(isInstalled(phone, mail));
}

TEST(RemovalScenario, SpringBoardKilledInTheMiddleLeavesTheApplicationWholeOrGone)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    int round = 0;
    for (const char* const application : { "com.example.bank", "com.example.chat", "com.example.game",
             "com.example.maps", "com.example.music", "com.example.news" }) {
        const int springBoard = phone.pid("SpringBoard");
        std::thread removal([&] { phone.run({ "phone", "uninstall", application }); });
        const auto moment = std::chrono::steady_clock::now() + std::chrono::milliseconds(5 * round++);
        while (std::chrono::steady_clock::now() < moment) { }
        ::kill(springBoard, SIGKILL);
        removal.join();
        phone.answer({ "phone", "respring" });
        EXPECT_EQ(foldersOf(phone, application), isInstalled(phone, application) ? 2 : 0) << application;
    }
}

TEST(RemovalScenario, NotificationsAndBadgesOutliveARespring)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "push", notes, "--title", "Ünïcödé\n", "--badge", "9223372036854775807", "--sound" });
    const Json before = phone.answer({ "phone", "notifications" });
    // Without the status bar, whose clock goes on, and the banner, which doesn't come again.
    const auto homeScreen = [&phone] {
        const std::string text = phone.answer({ "phone", "describe" })["screen"];
        return text.substr(0, text.find("\nUIWindow"));
    };
    const std::string screen = homeScreen();
    EXPECT_NE(screen.find("9223372036854775807"), std::string::npos);
    phone.answer({ "phone", "respring" });
    EXPECT_EQ(phone.answer({ "phone", "notifications" }), before);
    EXPECT_EQ(homeScreen(), screen);
    for (const char* const badge : { "9223372036854775808", "1e3", "many", "" })
        EXPECT_EQ(phone.run({ "phone", "push", notes, "--badge", badge }).status, 2) << badge;
    EXPECT_EQ(phone.answer({ "phone", "notifications" }), before);
}

TEST(DeviceScenario, ALevelThatCantBeKeptIsSaid)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "volume", "0.25" });
    std::filesystem::remove_all(phone.root() + "/var/db");
    std::ofstream(phone.root() + "/var/db") << "in the way";
    EXPECT_NE(phone.answer({ "phone", "volume", "0.75" }, 1)["error"].get<std::string>().find("aren't kept"),
        std::string::npos);
    std::filesystem::remove(phone.root() + "/var/db");
    phone.answer({ "phone", "volume", "0.75" });
    phone.answer({ "phone", "respring" });
    EXPECT_EQ(phone.answer({ "phone", "status" })["device"]["volume"], 0.75);
}

TEST(DeviceScenario, AnOddContainerIsSaidAndPassedOver)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "down" });
    for (const auto& entry :
        std::filesystem::directory_iterator(phone.root() + "/var/mobile/Containers/Data/Application")) {
        std::filesystem::remove_all(entry.path() / "Library");
        std::filesystem::create_symlink("/nowhere/at/all", entry.path() / "Library");
        break;
    }
    const Outcome up = phone.run({ "phone", "up" });
    EXPECT_EQ(up.status, 0);
    EXPECT_NE(up.errors.find("is passed over: can't write "), std::string::npos) << up.errors;
    EXPECT_EQ(std::ranges::count(up.errors, '\n'), 1) << up.errors;
}

} // namespace scenario
