#include "scenario/command.h"
#include "scenario/json_vocabulary.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

/// Every verb, by the example in its help, answers in the words of docs/json.md.

namespace scenario {

namespace {

/// The words behind "appledger" of each verb's example in the manual.
std::vector<std::vector<std::string>> examplesOf(std::string manual)
{
    constexpr std::string_view beginning = "Example: appledger ";
    std::erase(manual, '\\');
    std::vector<std::vector<std::string>> examples;
    std::istringstream lines(manual);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(beginning)) {
            std::istringstream words(line.substr(beginning.size()));
            examples.emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
        }
    return examples;
}

} // namespace

TEST(JsonScenario, EveryVerbAnswersInTheDocumentedWords)
{
    const Phone phone;
    std::filesystem::current_path(phone.root()); // where examples that write a file write it
    std::vector<std::vector<std::string>> examples = examplesOf(phone.run({ "manual", "command" }).output);
    EXPECT_GT(examples.size(), 90U);
    const std::vector<std::string> up { "phone", "up" };
    const auto isEnd = [](const std::vector<std::string>& words) { return words[1] == "down" || words[1] == "erase"; };
    std::ranges::stable_partition(examples, [&](const auto& words) { return words == up; });
    std::ranges::stable_partition(examples, [&](const auto& words) { return words[0] != "phone" || !isEnd(words); });
    for (std::vector<std::string> words : examples) {
        std::string said;
        for (const std::string& word : words)
            said += word + " ";
        words.emplace_back("--json");
        const Outcome outcome = phone.run(words);
        EXPECT_LE(outcome.status, 2) << said;
        EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << said << outcome.output.substr(0, 500);
        const Json object = Json::parse(outcome.output, nullptr, false);
        ASSERT_TRUE(object.is_object()) << said << outcome.output.substr(0, 500);
        EXPECT_EQ(problemOfAnswer(object, outcome.status), "") << said << outcome.output.substr(0, 2000);
    }
    EXPECT_FALSE(std::filesystem::exists(phone.root() + "/var")) << "the last of them erased the phone";
}

TEST(JsonScenario, AFaultInTheWordsIsNoticed)
{
    const Json right { { "version", 1 }, { "ok", true } };
    EXPECT_EQ(problemOfAnswer(right, 0), "");
    const std::pair<const char*, Json> faults[] { { "application", 3 }, { "secondsAgo", "now" }, { "ok", false },
        { "steps", { { { "rule", true } } } }, { "bundleIdentifier", "a" }, { "changed", { Json::object() } } };
    for (const auto& [key, value] : faults) {
        Json wrong = right;
        wrong[key] = value;
        EXPECT_NE(problemOfAnswer(wrong, 0), "") << key;
    }
}

} // namespace scenario
