#include "cli/phone/switcher_command.h"

#include "cli/command/phone_client.h"
#include "cli/phone/phone_commands.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

ExitStatus listCards(const phone::PhoneDirectory& directory)
{
    const Json report = askPhone(directory, "SpringBoard", { { "verb", "switcher" } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    std::string text;
    for (const Json& card : report["cards"]) {
        text += card.value("application", "") + " (" + card.value("name", "") + "): "
            + (!card.value("running", false)          ? "not running"
                    : card.value("foreground", false) ? "runs in the foreground"
                                                      : "runs in the background")
            + (card.value("killable", false) ? "\n" : ", can't be killed\n");
    }
    say(text.empty() ? "The switcher has no cards." : text, report);
    return ExitStatus::Done;
}

ExitStatus killCard(const phone::PhoneDirectory& directory, const std::string& application)
{
    const Json report = askPhone(directory, "SpringBoard", { { "verb", "swipe" }, { "application", application } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say(application + (report.value("killed", false) ? " is killed." : "'s card can't be swiped away."), report);
    return ExitStatus::Done;
}

} // namespace

void addSwitcher(CLI::App& phone, SwitcherOptions& options, const std::function<void(SwitcherAction)>& chosen)
{
    CLI::App* const switcher
        = phone.add_subcommand("switcher", "the switcher's cards; with IDs, select the card of these applications");
    switcher->add_option("ID", options.applications, "bundle identifiers of the applications on the card");
    switcher->add_flag("--modifiers", options.modifiers, "select it as with a keyboard attached");
    CLI::App* const kill = switcher->add_subcommand("kill", "swipe an application's card away, which ends it");
    kill->fallthrough();
    kill->add_option("ID", options.application, "bundle identifier")->required();
    switcher->callback([&options, chosen, kill] {
        chosen([&options, kills = kill->parsed()](const phone::PhoneDirectory& directory) {
            if (kills)
                return killCard(directory, options.application);
            if (options.applications.empty())
                return listCards(directory);
            return phoneOpen(directory, options.modifiers ? "switcher-modifiers" : "switcher", options.applications);
        });
    });
}

} // namespace cli
