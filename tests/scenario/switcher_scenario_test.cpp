#include "scenario/command.h"

#include <gtest/gtest.h>

/// Applications that are kept alive or locked, from the command to a phone of real processes and back.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* mail = "com.example.mail";
constexpr const char* chat = "com.example.chat";

/// Each card: the application, "locked" where it can't be killed, and where its scene is.
std::string cards(const Phone& phone)
{
    std::string text;
    const Json report = phone.answer({ "phone", "switcher" });
    for (const Json& card : report["cards"])
        text += card["application"].get<std::string>().substr(12) + (card["killable"] == true ? "" : " locked")
            + (card["foreground"] == true ? " front" : "") + (card["running"] == true ? "; " : " ended; ");
    return text;
}

} // namespace

TEST(SwitcherScenario, KeepsTheListedAliveAndTheLockedFromBeingKilled)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    EXPECT_EQ(cards(phone), "");
    for (const char* const application : { notes, mail, chat })
        phone.answer({ "phone", "launch", application });
    phone.answer({ "phone", "home" });
    EXPECT_EQ(cards(phone), "chat; mail; notes; ");

    phone.answer({ "policy", "add", "ALImmortalForegroundApps", notes });
    phone.answer({ "policy", "add", "ALImmortalLockedApps", mail });
    for (const char* const application : { notes, mail })
        phone.answer({ "phone", "launch", application });
    phone.answer({ "phone", "home" });
    EXPECT_EQ(cards(phone), "mail locked; notes front; chat; ");
    EXPECT_EQ(phone.answer({ "phone", "switcher" })["cards"][0]["name"], "Letterbox🔒");

    EXPECT_EQ(phone.answer({ "phone", "switcher", "kill", mail })["killed"], false);
    EXPECT_EQ(phone.answer({ "phone", "switcher", "kill", notes })["killed"], true);
    phone.answer({ "phone", "switcher", "kill", notes }, 1);
    EXPECT_EQ(cards(phone), "mail locked; chat; ");

    phone.answer({ "policy", "set", "ALImmortalEnabled", "off" });
    EXPECT_EQ(phone.answer({ "phone", "switcher", "kill", mail })["killed"], true);
    EXPECT_EQ(phone.answer({ "phone", "switcher", chat })["opened"], Json::array({ chat }));
}

} // namespace scenario
