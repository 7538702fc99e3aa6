#include "cli/command/command_line.h"

#include "cli/command/application_names.h"
#include "cli/command/command_tree.h"
#include "phone/supervisor/phone_directory.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace cli {

namespace {

constexpr std::string_view productVersion = APPLEDGER_VERSION;

/// The words of a line that aren't options, up to the first that is none of a verb.
std::vector<std::string> wordsOf(int argumentCount, char** arguments)
{
    std::vector<std::string> words;
    for (int index = 1; index < argumentCount; ++index) {
        const std::string_view argument = arguments[index];
        if (argument == "--")
            break;
        if (argument == "--root")
            ++index;
        else if (!argument.starts_with('-'))
            words.emplace_back(argument);
    }
    return words;
}

bool isGiven(int argumentCount, char** arguments, std::string_view option)
{
    for (int index = 1; index < argumentCount && arguments[index] != std::string_view("--"); ++index)
        if (arguments[index] == option)
            return true;
    return false;
}

ExitStatus failUsage(std::string_view problem, const std::string& usage)
{
    std::string text(problem);
    while (text.ends_with('\n'))
        text.pop_back();
    return refuseUsage(usage.empty() ? text : text + "\n" + usage);
}

/// The words that name a verb, where the last one names none of its group: then what is wrong with it.
std::optional<ExitStatus> refuseUnknownVerb(const CommandTree& tree, const std::vector<std::string>& given)
{
    const CLI::App* command = tree.find({});
    std::vector<std::string> words;
    for (const std::string& word : given) {
        if (command->get_require_subcommand_min() == 0)
            return std::nullopt;
        words.push_back(word);
        const CLI::App* const next = tree.find(words);
        if (!next) {
            std::string text = "there is no verb \"" + word + "\"";
            text += words.size() == 1 ? "" : " in \"" + words[words.size() - 2] + "\"";
            const std::string meant = meantVerb(tree, words);
            return failUsage(
                text + (meant.empty() ? "" : "; did you mean \"" + meant + "\"?") + " 'appledger help' lists them", "");
        }
        command = next;
    }
    if (command->get_require_subcommand_min() == 0)
        return std::nullopt;
    return failUsage("a verb is missing", command->help());
}

/// Exchanges the names of applications for their identifiers. Empty, or why that can't be.
std::optional<ExitStatus> findApplications(const VerbDetails& verb, const phone::PhoneDirectory& directory)
{
    if (verb.applications.empty())
        return std::nullopt;
    const std::vector<KnownApplication> known = knownApplications(directory);
    const bool isStrict = verb.isStrict && *verb.isStrict;
    const auto find = [&](Word& word) -> std::optional<ExitStatus> {
        if (word.empty())
            return std::nullopt;
        const MeantApplication meant = meantApplication(known, word);
        if (!meant.problem.empty())
            return refuseUsage(meant.problem);
        if (!meant.isKnown && isStrict)
            return refuse(meant.note.empty() ? "no application is known here" : meant.note);
        if (!meant.note.empty())
            warn(meant.note);
        word = Word(meant.identifier);
        return std::nullopt;
    };
    for (const ApplicationArgument& argument : verb.applications) {
        std::vector<Word*> words;
        if (argument.word)
            words.push_back(argument.word);
        if (argument.ifGiven && *argument.ifGiven)
            words.push_back(&**argument.ifGiven);
        if (argument.several)
            for (Word& word : *argument.several)
                words.push_back(&word);
        for (Word* const word : words)
            if (const auto status = find(*word))
                return status;
    }
    return std::nullopt;
}

ExitStatus run(const CommandTree& tree)
{
    if (tree.root().empty() && tree.isRootGiven())
        return refuseUsage("--root names no directory");
    std::error_code failed;
    const std::filesystem::path absolute = std::filesystem::absolute(tree.root(), failed).lexically_normal();
    const std::string text = absolute.has_filename() ? absolute.string() : absolute.parent_path().string();
    const phone::PhoneDirectory directory(failed ? tree.root() : text);
    if (const auto status = findApplications(*tree.verb(), directory))
        return *status;
    return tree.action()(directory);
}

} // namespace

ExitStatus runCommandLine(int argumentCount, char** arguments)
{
    CommandTree tree;
    setOutputFormat(isGiven(argumentCount, arguments, "--json") ? OutputFormat::Json : OutputFormat::Text);
    setVerbose(isGiven(argumentCount, arguments, "--verbose"));
    std::vector<std::string> words = wordsOf(argumentCount, arguments);
    if (words.empty() && isGiven(argumentCount, arguments, "--version")) {
        say("appledger " + std::string(productVersion), { { "appledger", productVersion } });
        return ExitStatus::Done;
    }
    if (!words.empty() && words.front() == "help") {
        words.erase(words.begin());
        if (const CLI::App* const command = tree.find(words)) {
            sayUsage(command->help(), ExitStatus::Done);
            return ExitStatus::Done;
        }
        return refuseUnknownVerb(tree, words).value_or(ExitStatus::BadUsage);
    }
    const bool wantsHelp = isGiven(argumentCount, arguments, "--help") || isGiven(argumentCount, arguments, "-h");
    if (!wantsHelp || (!words.empty() && !tree.find({ words.front() })))
        if (const auto status = refuseUnknownVerb(tree, words))
            return *status;
    try {
        tree.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        std::ostringstream output;
        if (tree.app().exit(error, output, output) != 0)
            return failUsage(output.str(), "");
        sayUsage(output.str(), ExitStatus::Done);
        return ExitStatus::Done;
    }
    return run(tree);
}

std::vector<VerbDetails> everyVerb()
{
    const CommandTree tree;
    return { tree.verbs().begin(), tree.verbs().end() };
}

std::string groupDescription(std::string_view words)
{
    for (const VerbGroup& group : verbGroups())
        if (group.words == words)
            return std::string(group.description);
    return "";
}

} // namespace cli
