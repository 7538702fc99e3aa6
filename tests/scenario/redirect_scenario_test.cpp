#include "scenario/command.h"

#include <gtest/gtest.h>

#include <sstream>

/// One application opens another, on a phone of real processes; and the command says beforehand what will happen.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* mail = "com.example.mail";
constexpr const char* forbidden = "IsBlockedFromLaunchingOthers/com.example.notes";

using Words = std::vector<std::string>;

/// The verdicts on lines of records.
std::vector<Json> answerRecords(const Phone& phone, const std::string& kind, const std::string& records)
{
    const Outcome outcome
        = runProgram({ "/bin/sh", "-c", R"(printf '%s' "$1" | "$2" explain "$3" --preferences "$4" --json)", "sh",
            records, APPLEDGER_COMMAND, kind, phone.preferenceFile() });
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    std::istringstream lines(outcome.output);
    std::vector<Json> verdicts;
    for (std::string line; std::getline(lines, line);)
        verdicts.push_back(Json::parse(line));
    return verdicts;
}

} // namespace

TEST(RedirectScenario, WhatIsExplainedHappens)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "policy", "set", forbidden, "true" });
    const struct {
        Words words;
        std::string outcome;
    } cases[] = {
        { { "--from", notes }, "decline" },
        { { "--from", notes, "--url" }, "decline" },
        { { "--from", notes, "--breadcrumb" }, "decline" },
        { { "--requester", "lsd", "--previous-scene", "sceneID:com.example.notes-default" }, "decline" },
        { { "--requester", "any", "--requester-bundle", notes, "--no-label" }, "decline" },
        { { "--from", notes, "--action", "other" }, "pass" },
        { { "--from", notes, "--label", "LaunchFromIcon" }, "pass" },
        { { "--from", "com.example.chat" }, "pass" },
    };
    const auto with = [](Words words, const Words& more) {
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    for (const auto& [words, outcome] : cases) {
        const Json explained = phone.answer(with({ "explain", "redirect", "--to", mail }, words));
        EXPECT_EQ(explained["outcome"], outcome) << Json(words);
        const Json happened = phone.answer(with({ "phone", "open", mail }, words));
        EXPECT_EQ(happened["outcome"], outcome) << Json(words);
        EXPECT_EQ(happened["reason"], explained["reason"]) << Json(words);
        EXPECT_EQ(happened["front"], outcome == "pass" ? mail : "") << Json(words);
        phone.answer({ "phone", "home" });
    }

    phone.answer({ "policy", "set", "ShouldSimulateSuccess/com.example.notes", "true" });
    const Json quiet = phone.answer({ "phone", "open", mail, "--from", notes });
    EXPECT_EQ(quiet["outcome"], "background");
    EXPECT_EQ(quiet["background"], Json({ mail }));
    EXPECT_EQ(quiet["front"], "");

    phone.answer({ "policy", "add", "ALBlockedLaunchApps", mail });
    const Json stopped = phone.answer({ "phone", "open", mail, "--from", notes });
    EXPECT_EQ(stopped["outcome"], nullptr) << "stopped before anyone asked who opens it";
    EXPECT_EQ(
        phone.answer({ "explain", "launch", mail, "--road", "workspace-execute" })["roads"][0]["outcome"], "stop");

    phone.answer({ "phone", "open", mail, "--from", "com.example.nobody" }, 1);
    EXPECT_EQ(phone.run({ "phone", "open", mail, "--from", notes, "--road", "tap" }).status, 2);
}

TEST(RedirectScenario, RecordsAreAnsweredLineByLine)
{
    const Phone phone;
    phone.answer({ "policy", "set", forbidden, "true" });
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", mail });
    const std::string record
        = R"({"transitionRequest":true,"eventLabel":null,"sourceEntity":)"
          R"({"bundleIdentifier":"com.example.notes","action":"none"},"requester":null,)"
          R"("previousScene":null,"destination":"com.example.mail","secondsSinceSourceLaunch":null})";
    const auto redirects = answerRecords(phone, "redirect", record + "\nnonsense\n\n" + record);
    ASSERT_EQ(redirects.size(), 4U);
    EXPECT_EQ(redirects[0],
        (Json { { "outcome", "decline" }, { "reason", "No Redirect" },
            { "rule", "forbidden-source IsBlockedFromLaunchingOthers/com.example.notes" } }));
    EXPECT_TRUE(redirects[1].contains("error"));
    EXPECT_TRUE(redirects[2].contains("error"));
    EXPECT_EQ(redirects[3], redirects[0]) << "the last line needs no end";

    const auto launches = answerRecords(
        phone, "launch", R"({"road":"SBIconView _handleTap","bundleIdentifier":"com.example.mail","bypass":null})");
    ASSERT_EQ(launches.size(), 1U);
    EXPECT_EQ(launches[0]["outcome"], "stop");

    EXPECT_EQ(runProgram({ APPLEDGER_COMMAND, "explain", "redirect", "--preferences", phone.root() }).status, 1);
    EXPECT_EQ(phone.run({ "explain", "nothing" }).status, 2);
}

} // namespace scenario
