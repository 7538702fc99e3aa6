#include "scenario/command.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

/// Policies as people say them: in words, with reasons, for a while, as whole sets, and back again.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";

using Words = std::vector<std::string>;

bool says(const Outcome& outcome, const std::string& text)
{
    return (outcome.output + outcome.errors).find(text) != std::string::npos;
}

/// What holds for the application, by the command.
Json policiesOf(const Phone& phone, const std::string& application)
{
    return phone.answer({ "policy", "show", application })["policies"];
}

} // namespace

TEST(PolicyWordsScenario, AnApplicationIsBlockedByNameAndTheRefusalSaysWhy)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const Json blocked = phone.answer({ "policy", "block", "scribbles", "letterbox" });
    EXPECT_EQ(blocked["applications"], Json(Words { notes, "com.example.mail" }));
    EXPECT_EQ(blocked["notifications"].size(), 1U);
    const Json tap = phone.answer({ "phone", "tap", "Scribbles" });
    EXPECT_EQ(tap["rule"], "ALBlockedLaunchApps");
    const Outcome text = phone.run({ "phone", "tap", notes });
    EXPECT_TRUE(says(text, "Why: ALBlockedLaunchApps lists com.example.notes.")) << text.output;
    EXPECT_FALSE(says(text, "Stopped at") || says(text, "Volume")) << "what developers want: " << text.output;
    EXPECT_TRUE(says(phone.run({ "phone", "tap", notes, "--verbose" }), "Stopped at SBIconView _handleTap"));

    // Spotlight was loaded before: it lets it pass, and later knows a list that has changed since.
    EXPECT_EQ(phone.answer({ "phone", "spotlight", notes })["rule"], "ALBlockedLaunchApps");
    phone.answer({ "phone", "kill", "Spotlight" });
    phone.answer({ "policy", "allow", notes });
    const Json old = phone.answer({ "phone", "spotlight", notes });
    EXPECT_EQ(old["rule"], "ALBlockedLaunchApps");
    EXPECT_NE(old["why"].get<std::string>().find("they have changed since"), std::string::npos) << old["why"];

    const struct {
        Words policy;
        Words words;
        const char* rule;
    } cases[] {
        { { "policy", "hide", notes }, { "phone", "tap", notes }, "ALHiddenApps" },
        { { "policy", "unhide", notes }, { "phone", "push", notes, "--sound" }, nullptr },
        { { "policy", "silence", notes }, { "phone", "push", notes, "--sound" }, "ALMutedNotifications" },
        { { "policy", "hush", notes }, { "phone", "push", notes }, "ALBlockedNotifications" },
        { { "policy", "freeze", notes }, { "phone", "store", "buy", notes }, "ALBlockedUpdateApps" },
        { { "policy", "protect", notes }, { "phone", "uninstall", notes }, "ALBlockedUninstallApps" },
        { { "policy", "confine", "Pigeon" }, { "phone", "open", notes, "--from", "Pigeon" },
            "IsBlockedFromLaunchingOthers/com.example.chat" },
        { { "policy", "lock", notes }, { "phone", "tap", notes }, "ALRequireAuthApps" },
    };
    for (const auto& [policy, words, rule] : cases) {
        phone.answer(policy);
        const Json answer = phone.answer(words);
        EXPECT_EQ(answer.value("rule", Json()), rule ? Json(rule) : Json()) << words[1] << answer;
    }
}

TEST(PolicyWordsScenario, WhatNoApplicationIsCalledIsTakenWithANoteAndRefusedWhereThatIsAsked)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const Json taken = phone.answer({ "policy", "block", "com.exmple.notes" });
    EXPECT_NE(taken["warnings"][0].get<std::string>().find("Scribbles (com.example.notes)"), std::string::npos);
    EXPECT_EQ(policiesOf(phone, "com.exmple.notes")["ALBlockedLaunchApps"], true);
    phone.answer({ "policy", "block", "com.exmple.mail", "--strict" }, 1);
    EXPECT_EQ(policiesOf(phone, "com.exmple.mail"), Json::object());
    const Outcome several = phone.run({ "policy", "block", "com", "o" });
    EXPECT_EQ(phone.run({ "policy", "block", "op" }).status, 2) << "App Store, Corner Shop, Gramophone";
}

TEST(PolicyWordsScenario, OneStatusForOneFaultAndAnObjectForEach)
{
    const Phone phone;
    const std::pair<Words, int> cases[] { { { "tap", notes }, 2 }, { { "phone", "tpa" }, 2 }, { { "phone", "tap" }, 2 },
        { { "policy", "set", "ALNothing", "1" }, 2 }, { { "policy", "set", "ALLanguage", "de" }, 2 },
        { { "policy", "set", "ALActionBarItems", "badge,bagde" }, 2 }, { { "policy", "brightness", notes, "80" }, 2 },
        { { "policy", "allow", notes, "--for", "soon" }, 2 }, { { "explain", "launch", notes, "--road", "none" }, 2 },
        { { "phone", "status" }, 1 }, { { "policy", "undo" }, 1 }, { { "policy", "profile", "use", "none" }, 1 },
        { { "policy", "import", "/none" }, 1 }, { { "phone", "erase" }, 2 } };
    for (const auto& [words, status] : cases)
        EXPECT_NE(phone.answer(words, status).value("error", ""), "") << words[0];
    EXPECT_TRUE(says(phone.run({ "tap", notes }), "appledger phone tap"));
    EXPECT_TRUE(says(phone.run({ "--version" }), "appledger "));
    EXPECT_TRUE(says(phone.run({ "help", "phone", "tap" }), "Example: appledger phone tap com.example.notes"));
    for (const char* const level : { "80%", "0.8" })
        EXPECT_NEAR(phone.answer({ "policy", "brightness", notes, level })["brightness"].get<double>(), 0.8, 1e-6);
    EXPECT_NEAR(phone.answer({ "policy", "brightness", notes, "80", "%" })["brightness"].get<double>(), 0.8, 1e-6);
}

TEST(PolicyWordsScenario, EachChangeIsInTheHistoryAndIsTakenBack)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "policy", "block", notes });
    phone.answer({ "policy", "mute", notes });
    phone.answer({ "policy", "brightness", notes, "50%" });
    phone.answer({ "app", "rename", notes, "Jotter" });
    phone.answer({ "app", "badge", notes, "3" });
    const Json history = phone.answer({ "policy", "history" })["changes"];
    ASSERT_EQ(history.size(), 5U);
    EXPECT_EQ(history[3]["verb"], "app rename com.example.notes Jotter");
    EXPECT_EQ(history[4]["changed"][0]["key"], "ALCustomBadges");
    EXPECT_EQ(history[0]["changed"][0]["application"], notes);
    phone.answer({ "policy", "undo", "5" });
    EXPECT_EQ(policiesOf(phone, notes), Json::object());
    EXPECT_EQ(phone.answer({ "phone", "tap", notes })["opened"].size(), 1U) << "SpringBoard has heard of it";
    phone.answer({ "policy", "redo", "2" });
    EXPECT_EQ(policiesOf(phone, notes), (Json { { "ALBlockedLaunchApps", true }, { "mute", true } }));
}

TEST(PolicyWordsScenario, WhatIsForAWhileTakesItselfBackUpOrDown)
{
    const Phone phone;
    phone.answer({ "policy", "block", notes, "com.example.mail" });
    phone.answer({ "policy", "allow", notes, "--for", "0.001" }); // down: the next verb sees that it is over
    EXPECT_EQ(policiesOf(phone, notes)["ALBlockedLaunchApps"], true);
    phone.answer({ "policy", "allow", notes, "--for", "1h" });
    phone.answer({ "policy", "allow", "com.example.mail", "--for", "0.001" });
    phone.answer({ "phone", "up" });
    EXPECT_EQ(phone.answer({ "phone", "tap", "com.example.mail" })["opened"].size(), 0U) << "over before it was up";
    EXPECT_EQ(phone.answer({ "phone", "tap", notes })["opened"].size(), 1U) << "not over";
    phone.answer({ "phone", "home" });

    // Up: the supervisor has it taken back, and SpringBoard hears of it.
    phone.answer({ "policy", "allow", "com.example.mail", "--for", "0.2" });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds { 20 };
    while (phone.answer({ "phone", "tap", "com.example.mail" })["opened"].size() == 1U
        && std::chrono::steady_clock::now() < deadline)
        phone.answer({ "phone", "home" });
    EXPECT_EQ(phone.answer({ "phone", "tap", "com.example.mail" })["rule"], "ALBlockedLaunchApps");
}

TEST(PolicyWordsScenario, AWholeSetGoesOutAndInAndAProfileIsOneNotificationAKind)
{
    const Phone phone;
    const std::string file = phone.root() + "/evening.json";
    phone.answer({ "policy", "block", notes, "com.example.mail" });
    phone.answer({ "policy", "silence", notes });
    phone.answer({ "policy", "profile", "save", "evening" });
    phone.answer({ "policy", "export", file });
    EXPECT_EQ(phone.answer({ "policy", "diff", file, "evening" })["differences"], Json::array());
    phone.answer({ "policy", "reset", notes });
    EXPECT_EQ(policiesOf(phone, notes), Json::object());
    EXPECT_EQ(phone.answer({ "policy", "import", file, "--dry-run" })["changed"].size(), 2U);
    EXPECT_EQ(policiesOf(phone, notes), Json::object());

    std::ofstream(file) << "{\"format\": \"appledger-policies\",\n\"version\": 1, \"domain\": {\n\"ALHiddenApps\": 7}}";
    const Json refused = phone.answer({ "policy", "import", file }, 1);
    EXPECT_NE(refused["error"].get<std::string>().find("line 3: ALHiddenApps takes"), std::string::npos) << refused;
    EXPECT_EQ(policiesOf(phone, notes), Json::object());

    phone.answer({ "phone", "up" });
    const Json used = phone.answer({ "policy", "profile", "use", "evening" });
    EXPECT_EQ(used["notifications"].size(), 2U) << used;
    EXPECT_EQ(used["posted"], true);
    EXPECT_EQ(phone.answer({ "phone", "tap", notes })["rule"], "ALBlockedLaunchApps");
    EXPECT_EQ(phone.answer({ "policy", "profile", "list" })["profiles"][0]["inForce"], true);
    phone.answer({ "policy", "profile", "remove", "evening" });
}

TEST(PolicyWordsScenario, ShellsAreToldWhatMayComeNextAndNothingIsStarted)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "down" });
    const auto candidates = [&phone](Words words) {
        words.insert(words.begin(), { "complete", "--" });
        return phone.run(words).output;
    };
    const std::pair<Words, const char*> cases[] {
        { { "pol" }, "policy  " },
        { { "phone", "scr" }, "screenshot  " },
        { { "policy", "block", "ribb" }, "com.example.notes  Scribbles\n" },
        { { "policy", "block", "com.example.mail", "com.example.no" }, "com.example.notes  Scribbles\n" },
        { { "policy", "set", "kApp" }, "kAppearance  " },
        { { "phone", "kill", "Spo" }, "Spotlight  " },
        { { "phone", "open", "com.example.notes", "--road", "switcher-m" }, "switcher-modifiers  " },
        { { "phone", "open", "--ro" }, "--road  " },
        { { "policy", "profile", "u" }, "use  " },
    };
    for (const auto& [words, candidate] : cases)
        EXPECT_NE(candidates(words).find(candidate), std::string::npos) << words.back() << ": " << candidates(words);
    EXPECT_EQ(candidates({ "policy", "settle" }), "");
    EXPECT_EQ(phone.run({ "phone", "status" }).status, 1);
}

TEST(PolicyWordsScenario, PhonesAreListedAndGo)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    bool isListed = false;
    const Json phones = phone.answer({ "phone", "list" })["phones"];
    for (const Json& known : phones)
        isListed = isListed || (known["root"] == phone.root() && known["isUp"] == true);
    EXPECT_TRUE(isListed) << phones;
    EXPECT_EQ(phone.answer({ "phone", "apps" })["applications"].size(), 20U);
    phone.answer({ "phone", "erase", "--yes" });
    EXPECT_FALSE(std::filesystem::exists(phone.root()));

    const Json temporary = phone.answer({ "phone", "up", "--temporary" });
    const std::string root = temporary["root"];
    EXPECT_NE(root, phone.root());
    EXPECT_EQ(runProgram({ APPLEDGER_COMMAND, "--root", root, "phone", "down" }).status, 0);
    EXPECT_FALSE(std::filesystem::exists(root));
}

} // namespace scenario
