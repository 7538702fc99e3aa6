#include "cli/command/verb_rows.h"
#include "phone/process/process_definition.h"
#include "support/golden.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace cli {

namespace {

/// The supervisor answers these itself.
constexpr std::string_view supervisorRequests[] { "down", "kill", "respring", "status" };

bool isAnswered(std::string_view request)
{
    if (std::ranges::find(supervisorRequests, request) != std::end(supervisorRequests))
        return true;
    for (const phone::ProcessDefinition& process : phone::processDefinitions())
        for (const phone::RequestRows* const table : process.requests)
            if (std::ranges::find(*table, request, &phone::RequestRow::verb) != table->end())
                return true;
    return false;
}

std::string readManual()
{
    const std::filesystem::path tests = support::folderOf(__FILE__).parent_path().parent_path();
    std::ifstream file(tests.parent_path() / "README.md");
    return { std::istreambuf_iterator<char>(file), {} };
}

} // namespace

TEST(VerbRows, EachIsAnsweredBySomeProcessAndStandsInTheManual)
{
    const std::string manual = readManual();
    ASSERT_FALSE(manual.empty());
    std::set<std::string_view> seen;
    for (const VerbRows* const table : allVerbs())
        for (const VerbRow& row : *table) {
            EXPECT_TRUE(seen.insert(row.words).second) << row.words << " has two rows";
            EXPECT_TRUE(row.request.empty() || isAnswered(row.request)) << row.words << " asks for " << row.request;
            EXPECT_TRUE(row.isHidden || manual.find("`" + std::string(row.words)) != std::string::npos)
                << row.words << " doesn't stand in README.md";
        }
    EXPECT_GT(seen.size(), 30U);
}

TEST(VerbRows, NoRequestHasTwoAnswersInOneProcess)
{
    for (const phone::ProcessDefinition& process : phone::processDefinitions()) {
        std::set<std::string_view> seen;
        for (const phone::RequestRows* const table : process.requests)
            for (const phone::RequestRow& row : *table)
                EXPECT_TRUE(seen.insert(row.verb).second) << process.name << " answers " << row.verb << " twice";
    }
}

} // namespace cli
