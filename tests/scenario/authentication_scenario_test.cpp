#include "scenario/command.h"

#include <gtest/gtest.h>

/// Protected applications, from the command to a phone of real processes and back.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* reason = "Authenticate to open this app.";

Json promptsOf(const std::string& process)
{
    return Json::array({ { { "process", process }, { "reason", reason } } });
}

} // namespace

TEST(AuthenticationScenario, AProtectedApplicationOpensOnceItsOwnerHasAuthenticated)
{
    const Phone phone;
    phone.answer({ "policy", "add", "ALRequireAuthApps", notes });
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "authenticate", "yes" }, 1); // nothing asks
    for (const char* const no : { "no", "cancel" }) {
        const Json stopped = phone.answer({ "phone", "tap", notes });
        EXPECT_EQ(stopped["opened"], Json::array());
        EXPECT_EQ(stopped["prompts"], promptsOf("SpringBoard"));
        const Json refused = phone.answer({ "phone", "authenticate", no });
        EXPECT_EQ(refused["opened"], Json::array());
        EXPECT_EQ(refused["prompt"]["application"], notes);
        EXPECT_EQ(refused["front"], "");
    }
    phone.answer({ "phone", "tap", notes });
    const Json up = phone.answer({ "phone", "status" })["prompts"];
    ASSERT_EQ(up.size(), 1U);
    EXPECT_EQ(up[0]["reason"], reason);
    EXPECT_EQ(up[0]["application"], notes);

    const Json granted = phone.answer({ "phone", "authenticate", "yes" });
    EXPECT_EQ(granted["opened"], Json::array({ notes }));
    EXPECT_EQ(granted["front"], notes);
    EXPECT_EQ(phone.answer({ "phone", "status" })["prompts"], Json::array());
}

TEST(AuthenticationScenario, SpotlightAndSpringBoardEachAskForThemselves)
{
    const Phone phone;
    phone.answer({ "policy", "add", "ALRequireAuthApps", notes });
    phone.answer({ "phone", "up" });
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["prompts"], promptsOf("Spotlight"));
    const Json inSpotlight = phone.answer({ "phone", "authenticate", "yes" });
    EXPECT_EQ(inSpotlight["prompt"]["process"], "Spotlight");
    EXPECT_EQ(inSpotlight["opened"], Json::array());
    EXPECT_EQ(inSpotlight["prompts"], promptsOf("SpringBoard"));
    const Json inSpringBoard = phone.answer({ "phone", "authenticate", "yes" });
    EXPECT_EQ(inSpringBoard["prompt"]["process"], "SpringBoard");
    EXPECT_EQ(inSpringBoard["opened"], Json::array({ notes }));
}

} // namespace scenario
