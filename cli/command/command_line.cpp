#include "cli/command/command_line.h"

#include "cli/command/arguments.h"
#include "cli/command/default_root.h"
#include "cli/command/verb_rows.h"
#include "phone/supervisor/phone_directory.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>

namespace cli {

namespace {

constexpr const VerbRows* tables[] { &planVerbs, &lifeVerbs, &launchVerbs, &switcherVerbs, &screenVerbs, &searchVerbs,
    &deviceVerbs, &notificationVerbs, &iconVerbs, &storeVerbs, &recordVerbs, &nameAndBadgeVerbs, &alertVerbs,
    &operationVerbs, &permissionVerbs, &bundleVerbs, &customIconVerbs, &policyVerbs, &explainVerbs };

struct VerbGroup {
    std::string_view words;
    std::string_view description;
};

constexpr VerbGroup groups[] {
    { "phone", "run a phone and use it" },
    { "phone store", "visit the store" },
    { "app", "see and change one application, as the panel does" },
    { "icon", "give applications pictures of your choice" },
    { "policy", "read and change what the phone does for each application" },
    { "explain", "say what would happen, and which rule says so" },
};

class CommandLine {
public:
    CommandLine()
    {
        app_.require_subcommand(1);
        app_.add_option("--root", root_, "directory of the phone (default " + root_ + ")");
        app_.add_flag("--json", json_, "answer with one JSON object");
        app_.fallthrough();
        app_.footer("Exit status: 0 done (a launch that the phone refused is an answer too), 1 refused or not\n"
                    "found, 2 bad usage.");
        for (const VerbRows* const table : tables)
            for (const VerbRow& row : *table)
                add(row);
    }

    ExitStatus run(int argumentCount, char** arguments)
    {
        try {
            app_.parse(argumentCount, arguments);
        } catch (const CLI::ParseError& error) {
            std::ostringstream output;
            const ExitStatus status = app_.exit(error, output, output) == 0 ? ExitStatus::Done : ExitStatus::BadUsage;
            sayUsage(output.str(), status);
            return status;
        }
        setOutputFormat(json_ ? OutputFormat::Json : OutputFormat::Text);
        if (root_.empty() && app_.count("--root") > 0) {
            refuse("--root names no directory");
            return ExitStatus::BadUsage;
        }
        std::error_code failed;
        const std::filesystem::path absolute = std::filesystem::absolute(root_, failed).lexically_normal();
        const std::string text = absolute.has_filename() ? absolute.string() : absolute.parent_path().string();
        return action_(phone::PhoneDirectory(failed ? root_ : text));
    }

private:
    /// The group or verb of those words, which is made where it isn't there yet.
    CLI::App& commandOf(std::string_view words)
    {
        const std::size_t space = words.rfind(' ');
        CLI::App& parent = space == std::string_view::npos ? app_ : commandOf(words.substr(0, space));
        const std::string name(space == std::string_view::npos ? words : words.substr(space + 1));
        const auto known
            = parent.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
        if (!known.empty())
            return *known.front();
        CLI::App& made = *parent.add_subcommand(name);
        made.fallthrough();
        for (const VerbGroup& group : groups)
            if (group.words == words)
                made.description(std::string(group.description))->require_subcommand(1);
        return made;
    }

    void add(const VerbRow& row)
    {
        CLI::App& verb = commandOf(row.words);
        verb.description(std::string(row.description));
        Arguments arguments(verb);
        verb.callback([this, &verb, action = row.begin(arguments)] {
            // One that has verbs of its own: the word behind it decides.
            if (verb.get_subcommands().empty())
                action_ = action;
        });
    }

    CLI::App app_ { "AppLedger: control, application by application, over what the phone does.", "appledger" };
    std::string root_ = defaultRoot();
    bool json_ = false;
    Action action_;
};

} // namespace

std::span<const VerbRows* const> allVerbs() noexcept
{
    return tables;
}

ExitStatus runCommandLine(int argumentCount, char** arguments)
{
    return CommandLine().run(argumentCount, arguments);
}

} // namespace cli
