#include "cli/explain/explain_command.h"
#include "cli/explain/explain_policies.h"

#include "platform/foundation/values.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <string>

/// Records and preferences that nobody wrote on purpose: no crash, an answer to each, and the rules that are well
/// formed hold in the middle of them. The seed is fixed, so that a failure comes again.

namespace cli {

using namespace platform;
using Json = nlohmann::json;

namespace {

class Chance {
public:
    std::size_t below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_); }
    template <class T, std::size_t Count> const T& of(const T (&choices)[Count]) { return choices[below(Count)]; }

private:
    std::mt19937 random_ { 20 };
};

constexpr std::string_view prefixes[] { "IsBlockedFromLaunchingOthers/", "IsBlockedFromBeingLaunched/",
    "IsBlockedFromLaunchingAppStore/", "IsBlockedFromLaunchingSafari/", "ShouldTeardownAutomatically/",
    "ShouldSimulateSuccess/", "CustomBypassedApplications/", "CustomBlockedApplications/", "ALHiddenApps",
    "ALBlockedLaunchApps", "ALRequireAuthApps", "" };
constexpr std::string_view rests[] { "", "/", "//", "a/b", "->", "x->y", "IsBlockedFromBeingLaunched/", " ", "\u00e9",
    "-default", "x" };

id mutatedValue(Chance& chance, int depth)
{
    switch (chance.below(depth > 0 ? 9 : 7)) {
    case 0:
        return boolean(chance.below(2) == 0);
    case 1:
        return number(static_cast<int>(chance.below(3)) - 1);
    case 2:
        return real(0.5);
    case 3:
        return string(chance.of(rests));
    case 4:
        return data("\x00\xFF");
    case 5:
        return date(0);
    case 6:
        return emptyArray();
    case 7: {
        std::vector<id> items;
        for (std::size_t count = chance.below(5); count > 0; --count)
            items.push_back(mutatedValue(chance, depth - 1));
        return array(std::move(items));
    }
    default:
        return dictionary({ { chance.of(rests), mutatedValue(chance, depth - 1) } });
    }
}

id preferencesAmongNoise(Chance& chance)
{
    std::vector<std::pair<id, id>> pairs;
    for (std::size_t count = chance.below(40); count > 0; --count)
        pairs.emplace_back(string(std::string(chance.of(prefixes)).append(chance.of(rests))), mutatedValue(chance, 3));
    const id mixed = array({ number(3), string("com.example.mail"), emptyArray(), array({ "com.example.chat" }) });
    pairs.emplace_back(string("CustomBlockedApplications/com.example.notes"), mixed);
    pairs.emplace_back(string("CustomBypassedApplications/com.example.notes"), mixed);
    pairs.emplace_back(string("IsBlockedFromBeingLaunched/com.example.bank"), string("yes"));
    return dictionary(std::move(pairs));
}

std::string record(std::string_view source, std::string_view destination)
{
    return Json {
        { "transitionRequest", true }, { "eventLabel", nullptr },
        { "sourceEntity", { { "bundleIdentifier", source }, { "action", "none" } } },
        { "requester", { { "name", "lsd" }, { "bundleIdentifier", nullptr } } },
        { "previousScene", "sceneID:com.example.chat-default" }, { "destination", destination },
        { "secondsSinceSourceLaunch", 3.5 }
    }.dump();
}

std::string ruleOf(const std::string& line, const ExplainPolicies& policies)
{
    return Json::parse(explainRedirectLine(line, policies)).value("rule", "");
}

TEST(ExplainMutations, WellFormedRulesHoldAmongMalformedOnes)
{
    Chance chance;
    for (int round = 0; round < 500; ++round) {
        const ExplainPolicies policies(preferencesAmongNoise(chance));
        EXPECT_EQ(ruleOf(record("com.example.notes", "com.example.mail"), policies),
            "forbidden-pair CustomBlockedApplications/com.example.notes");
        EXPECT_EQ(ruleOf(record("com.example.mail", "com.example.notes"), policies),
            "allowed-pair CustomBypassedApplications/com.example.notes");
        EXPECT_EQ(ruleOf(record("com.example.chat", "com.example.bank"), policies),
            "forbidden-destination IsBlockedFromBeingLaunched/com.example.bank");
        // The nested list's item is no pair of the outer one's.
        EXPECT_EQ(ruleOf(record("com.example.notes", "com.example.chat"), policies), "default");
    }
}

std::string mutated(std::string line, Chance& chance)
{
    constexpr std::string_view pieces[] { "\"", "{", "}", "[", "]", ":", ",", "null", "true", "-1e999", "\\u0000",
        "\\ud800", "\xFF", "{\"a\":", "1", " ", "\xC3" };
    for (std::size_t count = 1 + chance.below(4); count > 0; --count) {
        const std::size_t place = chance.below(line.size() + 1);
        switch (chance.below(4)) {
        case 0:
            line.insert(place, chance.of(pieces));
            break;
        case 1:
            line.erase(place, chance.below(12));
            break;
        case 2:
            line.resize(place);
            break;
        default:
            if (place < line.size())
                line[place] = static_cast<char>(chance.below(256));
        }
    }
    return line;
}

TEST(ExplainMutations, EveryRecordGetsAVerdictOrAnError)
{
    Chance chance;
    const ExplainPolicies policies(preferencesAmongNoise(chance));
    const std::string launch = R"({"road":"SBFluidSwitcherViewController didSelectContainer:","bundleIdentifier":"a",)"
                               R"("layout":["a","b"],"bypass":"b","cached":{"ALHiddenApps":["a"]}})";
    std::size_t verdicts = 0;
    std::size_t errors = 0;
    const auto count = [&](const Json& answer) {
        EXPECT_NE(answer.contains("error"), answer.contains("outcome")) << answer;
        ++(answer.contains("error") ? errors : verdicts);
    };
    for (int round = 0; round < 5000; ++round) {
        count(Json::parse(
            explainRedirectLine(mutated(record("com.example.notes", "com.example.mail"), chance), policies)));
        count(Json::parse(explainLaunchLine(mutated(launch, chance), policies)));
    }
    EXPECT_GT(verdicts, 300U) << "mutations that leave nothing to decide test the parser alone";
    EXPECT_GT(errors, 300U);

    const std::string deep(200000, '[');
    count(Json::parse(explainRedirectLine(deep, policies)));
    count(Json::parse(explainRedirectLine(deep + std::string(deep.size(), ']'), policies)));
}

} // namespace

} // namespace cli
