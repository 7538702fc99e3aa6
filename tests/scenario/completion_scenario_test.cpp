#include "scenario/command.h"
#include "support/golden.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

/// What the shells make of the command's own completion.

namespace scenario {

namespace {

struct Shell {
    const char* name;
    /// Completes "$1 --root $2 WORDS…", with the words behind; the folder of the adapters is $0. Prints each candidate
    /// on a line, with what it means behind it where the shell shows that.
    const char* script;
};

constexpr Shell shells[] {
    { "bash", R"(source "$0/appledger.bash"
        COMP_WORDS=("$@")
        COMP_CWORD=$(($# - 1))
        _appledger
        printf '%s\n' "${COMPREPLY[@]}")" },
    // The two functions are the shell's own, of which one is told what there is and the other that there is nothing.
    { "zsh", R"(function _describe() { print -rl -- "${(@P)2}" }
        function _files() { print files }
        words=("$@")
        CURRENT=$#
        source "$0/_appledger")" },
};

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line.substr(0, line.find_first_of(":\t")));
    std::ranges::sort(lines); // each shell has an order of its own
    return lines;
}

std::string adapters()
{
    return support::folderOf(__FILE__).parent_path().parent_path() / "packaging/completions";
}

bool isInstalled(const std::string& shell)
{
    return runProgram({ "/usr/bin/env", shell, "-c", "exit 0" }).status == 0;
}

struct Case {
    std::vector<std::string> words; ///< the last is being typed
    std::vector<std::string> candidates;
};

const std::vector<Case>& cases()
{
    static const auto* const all = new std::vector<Case> {
        { { "policy", "bloc" }, { "block" } },
        { { "phone", "ta" }, { "tap" } },
        { { "policy", "block", "Scrib" }, { "com.example.notes" } },
        { { "policy", "block", "com.example.n" }, { "com.example.news", "com.example.notes" } },
        { { "phone", "kill", "Spot" }, { "Spotlight" } },
        { { "policy", "profile", "use", "ni" }, { "night" } },
        { { "phone", "tap", "--ro" }, { "--root" } },
    };
    return *all;
}

} // namespace

TEST(CompletionScenario, BashAndZshOfferWhatMayComeNext)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "down" });
    phone.answer({ "policy", "profile", "save", "night" });
    int tried = 0;
    for (const Shell& shell : shells) {
        if (!isInstalled(shell.name))
            continue;
        ++tried;
        for (const Case& line : cases()) {
            std::vector<std::string> arguments { "/usr/bin/env", shell.name, "-c", shell.script, adapters(),
                APPLEDGER_COMMAND, "--root", phone.root() };
            arguments.insert(arguments.end(), line.words.begin(), line.words.end());
            const Outcome outcome = runProgram(arguments);
            EXPECT_EQ(linesOf(outcome.output), line.candidates) << shell.name << ": " << line.words.back() << "\n"
                                                                << outcome.output << outcome.errors;
        }
    }
    EXPECT_GT(tried, 0);
}

TEST(CompletionScenario, FishOffersWhatMayComeNext)
{
    if (!isInstalled("fish"))
        GTEST_SKIP() << "fish isn't installed";
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "down" });
    phone.answer({ "policy", "profile", "save", "night" });
    constexpr const char* script = R"(set -x PATH (path dirname $argv[2]) $PATH
        source $argv[1]/appledger.fish
        complete -C "$argv[3]")";
    for (const Case& line : cases()) {
        std::string typed = "appledger --root " + phone.root();
        for (const std::string& word : line.words)
            typed += " " + word;
        const Outcome outcome = runProgram({ "/usr/bin/env", "HOME=" + phone.root(), "fish", "--no-config", "-c",
            script, adapters(), APPLEDGER_COMMAND, typed });
        std::vector<std::string> offered = linesOf(outcome.output);
        std::erase_if(
            offered, [](const std::string& word) { return word.ends_with('/'); }); // folders, of its own accord
        EXPECT_EQ(offered, line.candidates) << typed << "\n" << outcome.output << outcome.errors;
    }
}

TEST(CompletionScenario, StartsNothingAndMakesNothing)
{
    const Phone phone;
    EXPECT_NE(phone.run({ "complete", "--", "policy", "block", "" }).status, 2);
    EXPECT_TRUE(std::filesystem::is_empty(phone.root()));
}

} // namespace scenario
