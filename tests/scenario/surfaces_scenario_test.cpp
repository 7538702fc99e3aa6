#include "scenario/command.h"

#include <gtest/gtest.h>

/// Notifications and the Home Screen, from the command to a phone of real processes and back.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";

Json iconOf(const Phone& phone, const std::string& identifier)
{
    const Json report = phone.answer({ "phone", "icons" });
    for (const Json& icon : report["icons"])
        if (icon["application"] == identifier)
            return icon;
    return nullptr;
}

std::string push(const Phone& phone, const std::string& road)
{
    const Json report = phone.answer({ "phone", "push", notes, "--title", "Hello", "--sound", "--road", road });
    std::string text = report["published"] == true ? "published" : "dropped";
    text += report["sounded"] == true ? " sounded" : "";
    return text + (report["alerted"] == true ? " alerted" : "");
}

} // namespace

TEST(SurfacesScenario, AnApplicationIsHiddenAndShownAgainWithoutARespring)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const int springBoard = phone.pid("SpringBoard");
    EXPECT_EQ(iconOf(phone, notes)["shown"], true);
    phone.answer({ "policy", "add", "ALHiddenApps", notes });
    EXPECT_EQ(iconOf(phone, notes)["shown"], false);
    EXPECT_EQ(push(phone, "bulletin"), "dropped");
    EXPECT_EQ(push(phone, "request"), "dropped");
    EXPECT_EQ(push(phone, "section"), "published sounded");
    phone.answer({ "policy", "remove", "ALHiddenApps", notes });
    EXPECT_EQ(iconOf(phone, notes)["shown"], true);
    EXPECT_EQ(push(phone, "bulletin"), "published sounded alerted");
    EXPECT_EQ(phone.pid("SpringBoard"), springBoard);
}

TEST(SurfacesScenario, NotificationsAreBlockedAndMutedAndKeptByTheNotificationCentre)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "policy", "add", "ALMutedNotifications", notes });
    EXPECT_EQ(push(phone, "bulletin"), "published");
    phone.answer({ "policy", "add", "ALBlockedNotifications", notes });
    EXPECT_EQ(push(phone, "section"), "dropped");
    const Json held = phone.answer({ "phone", "notifications" })["notifications"];
    ASSERT_EQ(held.size(), 1U);
    EXPECT_EQ(held[0]["application"], notes);
    EXPECT_EQ(held[0]["title"], "Hello");
    EXPECT_EQ(held[0]["sound"], false);
    const Json explained = phone.answer({ "explain", "notification", notes, "--road", "section" })["roads"];
    EXPECT_EQ(explained[0]["outcome"], "drop");
    EXPECT_EQ(explained[0]["rule"], "ALBlockedNotifications");
}

TEST(SurfacesScenario, AProtectedApplicationStaysAndAStockPhoneLetsItGo)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "policy", "add", "ALBlockedUninstallApps", notes });
    const Json kept = phone.answer({ "phone", "uninstall", notes });
    EXPECT_EQ(kept["removed"], false);
    EXPECT_EQ(kept["offered"], false);
    EXPECT_EQ(kept["completionCalled"], false);
    EXPECT_EQ(kept["haptics"], Json::array({ "impact" }));
    phone.answer({ "phone", "down" });
    phone.answer({ "phone", "up", "--stock" });
    const Json gone = phone.answer({ "phone", "uninstall", notes, "--road", "animate" });
    EXPECT_EQ(gone["removed"], true);
    EXPECT_EQ(gone["haptics"], Json::array());
    EXPECT_EQ(iconOf(phone, notes), nullptr);
    EXPECT_EQ(phone.answer({ "phone", "uninstall", notes }, 1)["error"], "no such application is installed");
}

} // namespace scenario
