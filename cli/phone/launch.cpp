#include "cli/phone/launch.h"

#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/transition_options.h"
#include "cli/command/verb_rows.h"
#include "cli/phone/device.h"
#include "cli/phone/reasons.h"
#include "phone/search/spotlight.h"
#include "phone/springboard/roads.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

namespace cli {

using Json = nlohmann::json;

namespace {

constexpr std::string_view keptAlive = "ALImmortalForegroundApps";

bool isSpotlightRoad(std::string_view road)
{
    return std::ranges::any_of(phone::searchRoads(), [road](const auto& known) { return known.name == road; });
}

std::string joined(const Json& texts)
{
    std::string list;
    for (const Json& text : texts)
        list += (list.empty() ? "" : ", ") + text.get<std::string>();
    return list;
}

std::string_view describeAnswer(std::string_view answer)
{
    if (answer == "yes")
        return "Authenticated";
    return answer == "no" ? "Failed to authenticate" : "Cancelled";
}

/// One line for each step, as it happened.
std::string describeJournal(const Json& journal)
{
    std::string text;
    for (const Json& entry : journal) {
        text += "\n    " + entry.value("event", "") + " " + entry.value("subject", "");
        if (const std::string detail = entry.value("detail", ""); !detail.empty())
            text += ": " + detail;
    }
    return text;
}

/// The names of all roads, SpringBoard's first.
std::vector<std::string> roadNames()
{
    std::vector<std::string> names;
    for (const phone::Road& road : phone::springBoardRoads())
        names.emplace_back(road.name);
    for (const phone::SearchRoad& road : phone::searchRoads())
        names.emplace_back(road.name);
    return names;
}

/// A verb that opens an application by one road.
template <const char* const& Road> Action openBy(Arguments& arguments)
{
    const auto identifier = std::make_shared<Word>();
    arguments.add("ID", *identifier, "bundle identifier").required();
    return
        [identifier](const phone::PhoneDirectory& directory) { return openByRoad(directory, Road, { *identifier }); };
}

constexpr const char* tapRoad = "tap";
constexpr const char* quickActionRoad = "quick-action";
constexpr const char* spotlightRoad = "spotlight";

/// Has one application open another and says whether the transition passed, was declined and why, or went to the
/// background, and what happened on the way.
ExitStatus openFrom(
    const phone::PhoneDirectory& directory, const TransitionOptions& transition, const std::string& identifier)
{
    Json record = transitionRecord(transition, identifier);
    if (!transition.previousScene && record["previousScene"].is_null())
        record.erase("previousScene");
    return tellAnswer(
        directory, "SpringBoard", { { "verb", "transition" }, { "transition", record } },
        [&](Json& report) {
            report["application"] = identifier;
            addRedirectReason(report, directory, transitionRecord(transition, identifier));
        },
        [&identifier](const Json& report) {
            return describeLaunch(report, identifier) + (isVerbose() ? describeJournal(report["journal"]) : "");
        });
}

Action open(Arguments& arguments)
{
    struct Options {
        Word identifier;
        Word road { "service" };
        TransitionOptions transition;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ID", options->identifier, "bundle identifier").required();
    addTransitionOptions(arguments, options->transition);
    arguments.add("--road", options->road, "how the request comes (default service)")
        .oneOf(roadNames())
        .excludes("--from");
    return [options](const phone::PhoneDirectory& directory) {
        return options->transition.any() ? openFrom(directory, options->transition, options->identifier)
                                         : openByRoad(directory, options->road, { options->identifier });
    };
}

/// Answers the prompt that is up, SpringBoard's or else Spotlight's, and says what opened in consequence. Refused when
/// none is up.
Action authenticate(Arguments& arguments)
{
    struct Options {
        Word answer;
        double after = 0;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ANSWER", options->answer, "yes, no or cancel").required().oneOf({ "yes", "no", "cancel" });
    arguments.add("--after", options->after, "wait so long first").between(0, 3600).shownAs("SECONDS");
    return [options](const phone::PhoneDirectory& directory) {
        const std::string& answer = options->answer;
        if (!connectToPhone(directory))
            return refuse(whyNotConnected(directory));
        std::this_thread::sleep_for(std::chrono::duration<double>(options->after));
        const Json request { { "verb", "authenticate" }, { "success", answer == "yes" },
            { "cancelled", answer == "cancel" } };
        for (const char* const process : { "SpringBoard", "Spotlight" }) {
            Json report = askPhone(process, request);
            if (report.contains("prompt") && report["prompt"].is_null())
                continue;
            if (!report.value("ok", false))
                return refuse(report.value("error", "no answer"));
            const Json application = report["prompt"]["application"];
            if (answer == "yes" && application.is_string())
                addLaunchReason(report, directory, { application.get<std::string>() },
                    process == std::string_view("Spotlight"), application.get<std::string>());
            say(std::string(describeAnswer(answer)) + " in " + process + ". "
                    + describeLaunch(
                        report, application.is_string() ? application.get<std::string>() : "An application"),
                report);
            return ExitStatus::Done;
        }
        return refuse("no prompt is up");
    };
}

ExitStatus goHome(const phone::PhoneDirectory& directory)
{
    const auto addReason = [&directory](Json& report) {
        const std::string left = report.value("left", "");
        const bool isKept = !left.empty() && isListed(directory, keptAlive, left);
        report["keptRunning"] = isKept;
        if (isKept)
            addListReason(report, keptAlive, left);
    };
    return tellAnswer(directory, "SpringBoard", { { "verb", "home" } }, addReason, [](const Json& report) {
        const std::string left = report.value("left", "");
        return (left.empty() ? "The Home Screen was in front already." : "Left " + left + " for the Home Screen.")
            + (report.value("keptRunning", false) ? " It keeps running." : "") + whyText(report)
            + describeDeviceChanges(report);
    });
}

std::string describeExit(const Json& report, const std::string& identifier)
{
    std::ostringstream out;
    out << identifier << " has ended.";
    for (const Json& folder : report["folders"]) {
        const auto before = folder.value("before", std::size_t { 0 });
        const auto after = folder.value("after", std::size_t { 0 });
        out << " " << folder.value("folder", "") << ": ";
        if (before == 0)
            out << "was empty.";
        else if (after == 0)
            out << "cleared of " << before << (before == 1 ? " item." : " items.");
        else
            out << after << " of " << before << (before == 1 ? " item" : " items") << " left.";
    }
    if (report.value("clearingGoesOn", false))
        out << " The clearing goes on.";
    return out.str();
}

/// Ends an application's process, and says what was cleared of its caches. Refused when it doesn't run.
Action endApplication(Arguments& arguments)
{
    const auto identifier = std::make_shared<Word>();
    arguments.add("ID", *identifier, "bundle identifier").required();
    return [identifier](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard", { { "verb", "exit" }, { "application", identifier->text() } },
            [&identifier](const Json& report) { return describeExit(report, *identifier); });
    };
}

constexpr VerbRow rows[] {
    { "phone tap", "tap an icon", openBy<tapRoad>, "open" },
    { "phone launch", "bring an application to the front, as a tap does", openBy<tapRoad>, "open" },
    { "phone quick-action", "choose from an icon's quick-action menu", openBy<quickActionRoad>, "open" },
    { "phone spotlight", "tap a search result in Spotlight", openBy<spotlightRoad>, "open" },
    { "phone open", "open an application, or have another one open it", open, "transition" },
    { "phone home", "go to the Home Screen", plain<goHome>, "home" },
    { "phone exit", "end an application's process", endApplication, "exit" },
    { "phone authenticate", "answer the prompt that is up", authenticate, "authenticate" },
};

} // namespace

extern const VerbRows launchVerbs { rows };

std::string describeLaunch(const Json& report, const std::string& wanted)
{
    std::ostringstream out;
    if (!report["opened"].empty())
        out << "Opened " << joined(report["opened"]) << ".";
    else if (!report["background"].empty())
        out << "Opened " << joined(report["background"]) << " in the background.";
    else
        out << wanted << " didn't open.";
    for (const Json& declined : report["declined"]) {
        out << " The workspace declined";
        if (declined["reason"].is_string())
            out << ": \"" << declined["reason"].get<std::string>() << "\"";
        out << ".";
    }
    for (const Json& prompt : report["prompts"])
        out << " A prompt of " << prompt.value("process", "") << " is up (\"" << prompt.value("reason", "") << "\").";
    out << whyText(report);
    if (isVerbose() && report["stoppedAt"].is_string())
        out << " Stopped at " << report["stoppedAt"].get<std::string>() << ".";
    if (isVerbose() || !report["haptics"].empty())
        out << " Haptics: " << (report["haptics"].empty() ? "none" : joined(report["haptics"])) << ".";
    for (const Json& note : report["notes"])
        out << " " << note.get<std::string>() << ".";
    return out.str();
}

ExitStatus openByRoad(
    const phone::PhoneDirectory& directory, const std::string& road, const std::vector<std::string>& identifiers)
{
    const bool isOfSpotlight = isSpotlightRoad(road);
    return tellAnswer(
        directory, isOfSpotlight ? "Spotlight" : "SpringBoard",
        { { "verb", "open" }, { "road", road }, { "applications", identifiers } },
        [&](Json& report) {
            report["application"] = identifiers.empty() ? Json(nullptr) : Json(identifiers.front());
            addLaunchReason(report, directory, identifiers, isOfSpotlight);
        },
        [&identifiers](const Json& report) {
            return describeLaunch(report, joined(Json(identifiers))) + describeDeviceChanges(report);
        });
}

} // namespace cli
