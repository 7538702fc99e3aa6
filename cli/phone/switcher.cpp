#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/phone/launch.h"
#include "cli/phone/reasons.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

constexpr std::string_view lockedCards = "ALImmortalLockedApps";

std::string describeCards(const Json& report)
{
    std::string text;
    for (const Json& card : report["cards"]) {
        text += card.value("application", "") + " (" + card.value("name", "") + "): "
            + (!card.value("running", false)          ? "not running"
                    : card.value("foreground", false) ? "runs in the foreground"
                                                      : "runs in the background")
            + (card.value("killable", false) ? "" : ", can't be killed");
        for (const Json& other : card["sharedWith"])
            text += ", shares its card with " + other.get<std::string>();
        text += '\n';
    }
    return text.empty() ? "The switcher has no cards." : text;
}

Action cards(Arguments& arguments)
{
    struct Options {
        std::vector<Word> applications;
        bool modifiers = false;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ID", options->applications, "bundle identifiers of the applications on the card");
    arguments.flag("--modifiers", options->modifiers, "select it as with a keyboard attached");
    return [options](const phone::PhoneDirectory& directory) {
        if (options->applications.empty())
            return tellAnswer(directory, "SpringBoard", { { "verb", "switcher" } }, describeCards);
        return openByRoad(directory, options->modifiers ? "switcher-modifiers" : "switcher",
            { options->applications.begin(), options->applications.end() });
    };
}

Action killCard(Arguments& arguments)
{
    const auto application = std::make_shared<Word>();
    arguments.add("ID", *application, "bundle identifier").required();
    return [application](const phone::PhoneDirectory& directory) {
        return tellAnswer(
            directory, "SpringBoard", { { "verb", "swipe" }, { "application", application->text() } },
            [&](Json& report) {
                report["application"] = application->text();
                if (!report.value("killed", false) && isListed(directory, lockedCards, *application))
                    addListReason(report, lockedCards, *application);
            },
            [&application](const Json& report) {
                return application->text()
                    + (report.value("killed", false) ? " is killed." : "'s card can't be swiped away.")
                    + whyText(report);
            });
    };
}

constexpr VerbRow rows[] {
    { "phone switcher", "the switcher's cards; with IDs, select the card of these applications", cards, "switcher" },
    { "phone switcher kill", "swipe an application's card away, which ends it", killCard, "swipe" },
};

} // namespace

extern const VerbRows switcherVerbs { rows };

} // namespace cli
