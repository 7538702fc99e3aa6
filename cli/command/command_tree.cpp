#include "cli/command/command_tree.h"

#include "cli/command/arguments.h"
#include "cli/command/default_root.h"
#include "cli/command/nearest.h"

#include <algorithm>

namespace cli {

namespace {

constexpr const VerbRows* tables[] { &planVerbs, &lifeVerbs, &phoneListVerbs, &launchVerbs, &switcherVerbs,
    &screenVerbs, &fingerVerbs, &searchVerbs, &deviceVerbs, &notificationVerbs, &iconVerbs, &installVerbs, &storeVerbs,
    &recordVerbs, &nameAndBadgeVerbs, &alertVerbs, &operationVerbs, &permissionVerbs, &bundleVerbs, &customIconVerbs,
    &policyVerbs, &featureVerbs, &wholeSetVerbs, &profileVerbs, &historyVerbs, &explainVerbs, &completionVerbs };

constexpr VerbGroup groups[] {
    { "phone", "run a phone and use it" },
    { "phone store", "visit the store" },
    { "app", "see and change one application, as the panel does" },
    { "icon", "give applications pictures of your choice" },
    { "policy", "read and change what the phone does for each application" },
    { "policy profile", "whole sets of policies under a name" },
    { "explain", "say what would happen, and which rule says so" },
};

std::string_view lastWord(std::string_view words)
{
    return words.substr(words.rfind(' ') + 1);
}

} // namespace

std::span<const VerbRows* const> allVerbs() noexcept
{
    return tables;
}

std::span<const VerbGroup> verbGroups() noexcept
{
    return groups;
}

CommandTree::CommandTree()
    : app_("AppLedger: control, application by application, over what the phone does.", "appledger")
    , root_(defaultRoot())
{
    app_.require_subcommand(1);
    app_.add_option("--root", root_, "directory of the phone (default " + root_ + ", or $APPLEDGER_ROOT)");
    app_.add_flag("--json", json_, "answer with one JSON object (docs/json.md)");
    app_.add_flag("--verbose", verbose_, "say too what only those who write hooks want to know");
    app_.fallthrough();
    app_.footer("'appledger help VERB' says more of one. Try: appledger phone up\n"
                "Exit status: 0 done (a launch that the phone refused is an answer too), 1 refused or not\n"
                "found, 2 bad usage.");
    for (const VerbRows* const table : tables)
        for (const VerbRow& row : *table)
            add(row);
}

const CLI::App* CommandTree::find(const std::vector<std::string>& words) const
{
    const CLI::App* command = &app_;
    for (const std::string& word : words) {
        const auto found = command->get_subcommands([&word](const CLI::App* each) { return each->get_name() == word; });
        if (found.empty())
            return nullptr;
        command = found.front();
    }
    return command;
}

/// The group or verb of those words, which is made where it isn't there yet.
CLI::App& CommandTree::commandOf(std::string_view words)
{
    const std::size_t space = words.rfind(' ');
    CLI::App& parent = space == std::string_view::npos ? app_ : commandOf(words.substr(0, space));
    const std::string name(lastWord(words));
    const auto known = parent.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
    if (!known.empty())
        return *known.front();
    CLI::App& made = *parent.add_subcommand(name);
    made.fallthrough();
    for (const VerbGroup& group : groups)
        if (group.words == words)
            made.description(std::string(group.description))->require_subcommand(1);
    return made;
}

void CommandTree::add(const VerbRow& row)
{
    CLI::App& verb = commandOf(row.words);
    verb.description(std::string(row.description));
    if (row.isHidden)
        verb.group("");
    VerbDetails& details = verbs_.emplace_back();
    details.words = row.words;
    details.description = row.description;
    details.isHidden = row.isHidden;
    Arguments arguments(verb, details);
    verb.callback([this, &verb, &details, action = row.begin(arguments)] {
        // One that has verbs of its own: the word behind it decides.
        if (!verb.get_subcommands().empty())
            return;
        action_ = action;
        verb_ = &details;
    });
    verb.footer("Example: " + details.example());
}

std::string meantVerb(const CommandTree& tree, const std::vector<std::string>& words)
{
    std::string given;
    for (const std::string& word : words)
        given += (given.empty() ? "" : " ") + word;
    std::string best;
    std::size_t least = std::max<std::size_t>(words.back().size() / 3, 1) + 1;
    for (const VerbDetails& verb : tree.verbs()) {
        if (verb.isHidden)
            continue;
        // The same word of another group is nearer than another word of this one.
        const std::size_t asWhole = distanceBetween(given, verb.words) * 2;
        const std::size_t asWord = distanceBetween(words.back(), lastWord(verb.words)) * 2 + 1;
        const std::size_t distance = std::min(asWhole, asWord);
        if (distance < least * 2) {
            least = (distance + 1) / 2;
            best = verb.words;
            if (distance <= 1)
                break;
        }
    }
    return best.empty() ? "" : "appledger " + best;
}

} // namespace cli
