#include "cli/command/command_line.h"
#include "cli/command/command_tree.h"

#include <gtest/gtest.h>

#include <sstream>

namespace cli {

TEST(Usage, EveryExampleIsALineThatTheVerbUnderstands)
{
    for (const VerbDetails& verb : everyVerb()) {
        std::istringstream line(verb.example());
        std::vector<std::string> words { std::istream_iterator<std::string>(line), {} };
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        CommandTree tree;
        EXPECT_NO_THROW(tree.parse(static_cast<int>(arguments.size()), arguments.data())) << verb.example();
        EXPECT_TRUE(tree.verb() && tree.verb()->words == verb.words) << verb.example();
        EXPECT_FALSE(verb.description.empty()) << verb.words;
    }
}

TEST(Usage, AMistypedVerbIsNamedWithTheOneThatWasMeant)
{
    const CommandTree tree;
    const std::pair<std::vector<std::string>, std::string> cases[] {
        { { "tap" }, "appledger phone tap" },
        { { "phone", "tpa" }, "appledger phone tap" },
        { { "phone", "block" }, "appledger policy block" },
        { { "policy", "bock" }, "appledger policy block" },
        { { "undo" }, "appledger policy undo" },
        { { "xyzzy" }, "" },
    };
    for (const auto& [words, meant] : cases)
        EXPECT_EQ(meantVerb(tree, words), meant) << words.back();
}

} // namespace cli
