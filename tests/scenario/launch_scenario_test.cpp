#include "scenario/command.h"

#include <gtest/gtest.h>

/// Launches, from the command to a phone of real processes and back.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* chat = "com.example.chat";

using Words = std::vector<std::string>;

Words open(const std::string& road, const std::string& application)
{
    return { "phone", "open", application, "--road", road };
}

const Words everyRoad { "tap", "quick-action", "switcher", "switcher-modifiers", "service", "service-port",
    "workspace-execute", "workspace-validate", "spotlight", "spotlight-port", "spotlight-workspace" };

Json list(std::initializer_list<std::string> items)
{
    return Json(Words(items));
}

} // namespace

TEST(LaunchScenario, ABlockedApplicationDoesNotOpenUntilItIsAllowedAgain)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    EXPECT_EQ(phone.answer({ "phone", "tap", notes })["opened"], list({ notes }));
    EXPECT_EQ(phone.answer({ "phone", "home" })["left"], notes);

    const Json written = phone.answer({ "policy", "add", "ALBlockedLaunchApps", notes });
    EXPECT_EQ(written["notification"], "com.orbelix.appledger.launch_blocked_changed");
    EXPECT_EQ(written["posted"], true);
    const Json refused = phone.answer({ "phone", "tap", notes });
    EXPECT_EQ(refused["opened"], Json::array());
    EXPECT_EQ(refused["stoppedAt"], "SBIconView _handleTap");
    EXPECT_EQ(refused["haptics"], list({ "impact" }));
    EXPECT_EQ(refused["front"], "");

    phone.answer({ "policy", "remove", "ALBlockedLaunchApps", notes });
    const Json opened = phone.answer({ "phone", "tap", notes });
    EXPECT_EQ(opened["opened"], list({ notes }));
    EXPECT_EQ(opened["haptics"], Json::array());
}

TEST(LaunchScenario, TheRoadsThatAreExplainedAreThoseOfThePhonesVersion)
{
    const Phone phone;
    const auto roads = [&phone] { return phone.answer({ "explain", "launch", notes })["roads"].size(); };
    EXPECT_EQ(roads(), 11U) << "of every version while the phone is down";
    phone.answer({ "phone", "up", "--ios", "12.4" });
    EXPECT_EQ(roads(), 9U);
    EXPECT_EQ(phone.run({ "explain", "launch", notes, "--road", "switcher-modifiers" }).status, 1);
    EXPECT_EQ(phone.answer({ "explain", "launch", notes, "--road", "switcher" })["roads"].size(), 1U);
}

TEST(LaunchScenario, EachRoadStopsABlockedApplicationAndAStockPhoneOpensIt)
{
    struct Case {
        std::string road;
        std::string stoppedAt; ///< "" where the workspace declines it
        Json haptics;
    };
    const Case cases[] {
        { "tap", "SBIconView _handleTap", list({ "impact" }) },
        { "quick-action", "SBIconController iconView:didSelectApplicationShortcutItem:", Json::array() },
        { "switcher", "SBFluidSwitcherViewController didSelectContainer:", list({ "impact" }) },
        { "switcher-modifiers", "SBFluidSwitcherViewController didSelectContainer:modifierFlags:", list({ "impact" }) },
        { "service", "FBSOpenApplicationService openApplication:withOptions:completion:", Json::array() },
        { "service-port",
            "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:", Json::array() },
        { "workspace-execute",
            "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:", list({ "impact" }) },
        { "workspace-validate", "", Json::array() },
        { "spotlight", "FBSOpenApplicationService openApplication:withOptions:completion:", Json::array() },
        { "spotlight-port",
            "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:", Json::array() },
        { "spotlight-workspace", "LSApplicationWorkspace openApplicationWithBundleID:", Json::array() },
    };
    const Phone phone;
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", notes }); // before it is up
    phone.answer({ "phone", "up" });
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.road);
        const Json refused = phone.answer(open(expected.road, notes));
        EXPECT_EQ(refused["opened"], Json::array());
        EXPECT_EQ(refused["haptics"], expected.haptics);
        if (expected.stoppedAt.empty())
            EXPECT_EQ(refused["declined"][0]["reason"], "Blocked by AppLedger");
        else
            EXPECT_EQ(refused["stoppedAt"], expected.stoppedAt);
        EXPECT_EQ(phone.answer(open(expected.road, chat))["opened"], list({ chat }));
    }
    phone.answer({ "phone", "down" });

    phone.answer({ "phone", "up", "--stock" });
    for (const std::string& road : everyRoad)
        EXPECT_EQ(phone.answer(open(road, notes))["opened"], list({ notes })) << road;
}

TEST(LaunchScenario, SpotlightKeepsWhatItReadAtItsLoad)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", notes });
    // Spotlight lets it pass, and SpringBoard stops what Spotlight asks for.
    const std::string inSpringBoard = "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:";
    const std::string inSpotlight = "FBSOpenApplicationService openApplication:withOptions:completion:";
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["stoppedAt"], inSpringBoard);
    phone.answer({ "phone", "kill", "Spotlight" });
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["stoppedAt"], inSpotlight);

    phone.answer({ "policy", "remove", "ALBlockedLaunchApps", notes });
    EXPECT_EQ(phone.answer({ "phone", "tap", notes })["opened"], list({ notes }));
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["stoppedAt"], inSpotlight);
    phone.answer({ "phone", "kill", "Spotlight" });
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["opened"], list({ notes }));
}

TEST(LaunchScenario, HiddenApplicationsAreStoppedInSpringBoardAndNotInSpotlight)
{
    const Phone phone;
    phone.answer({ "policy", "add", "ALHiddenApps", notes });
    phone.answer({ "phone", "up" });
    EXPECT_EQ(phone.answer({ "phone", "tap", notes })["stoppedAt"], "SBIconView _handleTap");
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["stoppedAt"],
        "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:");
}

TEST(LaunchScenario, VersionsDifferInTheirRoads)
{
    const Phone phone;
    phone.answer({ "phone", "up", "--ios", "14.0" });
    for (const char* const road : { "workspace-execute", "switcher-modifiers" })
        phone.answer(open(road, notes), 1);
    EXPECT_EQ(phone.answer({ "phone", "switcher", notes, chat })["opened"].size(), 2U);
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", notes });
    // Without the outer method, the validation is what stops the workspace.
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["declined"][0]["reason"], "Blocked by AppLedger");
}

} // namespace scenario
