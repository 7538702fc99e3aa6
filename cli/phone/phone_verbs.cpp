#include "cli/command/phone_client.h"
#include "cli/phone/device_verbs.h"
#include "cli/phone/phone_commands.h"
#include "phone/search/spotlight.h"
#include "phone/springboard/roads.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

namespace cli {

using Json = nlohmann::json;

namespace {

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

/// What became of an attempt to open something, in sentences.
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
    if (report["opened"].empty() && report["background"].empty() && report["declined"].empty()
        && report["stoppedAt"].is_string())
        out << " Stopped at " << report["stoppedAt"].get<std::string>() << "; the system gave no reason.";
    out << " Haptics: " << (report["haptics"].empty() ? "none" : joined(report["haptics"])) << ".";
    for (const Json& note : report["notes"])
        out << " " << note.get<std::string>() << ".";
    return out.str();
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

} // namespace

std::vector<std::string> roadNames()
{
    std::vector<std::string> names;
    for (const phone::Road& road : phone::springBoardRoads())
        names.emplace_back(road.name);
    for (const phone::SearchRoad& road : phone::searchRoads())
        names.emplace_back(road.name);
    return names;
}

ExitStatus phoneOpen(
    const phone::PhoneDirectory& directory, const std::string& road, const std::vector<std::string>& identifiers)
{
    const Json report = askPhone(directory, isSpotlightRoad(road) ? "Spotlight" : "SpringBoard",
        { { "verb", "open" }, { "road", road }, { "applications", identifiers } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say(describeLaunch(report, joined(Json(identifiers)))
            + (report.contains("device") ? " " + describeDevice(report["device"]) : ""),
        report);
    return ExitStatus::Done;
}

ExitStatus phoneAuthenticate(const phone::PhoneDirectory& directory, const AuthenticateOptions& options)
{
    if (!connectToPhone(directory))
        return refuse("the phone at " + directory.root() + " isn't up");
    std::this_thread::sleep_for(std::chrono::duration<double>(options.after));
    const Json request { { "verb", "authenticate" }, { "success", options.answer == "yes" },
        { "cancelled", options.answer == "cancel" } };
    for (const char* const process : { "SpringBoard", "Spotlight" }) {
        const Json report = askPhone(process, request);
        if (report.contains("prompt") && report["prompt"].is_null())
            continue;
        if (!report.value("ok", false))
            return refuse(report.value("error", "no answer"));
        const Json& application = report["prompt"]["application"];
        say(std::string(describeAnswer(options.answer)) + " in " + process + ". "
                + describeLaunch(report, application.is_string() ? application.get<std::string>() : "An application"),
            report);
        return ExitStatus::Done;
    }
    return refuse("no prompt is up");
}

ExitStatus phoneOpenFrom(
    const phone::PhoneDirectory& directory, const TransitionOptions& transition, const std::string& identifier)
{
    Json record = transitionRecord(transition, identifier);
    if (!transition.previousScene && record["previousScene"].is_null())
        record.erase("previousScene");
    const Json report = askPhone(directory, "SpringBoard", { { "verb", "transition" }, { "transition", record } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say(describeLaunch(report, identifier) + describeJournal(report["journal"]), report);
    return ExitStatus::Done;
}

ExitStatus phoneHome(const phone::PhoneDirectory& directory)
{
    const Json report = askPhone(directory, "SpringBoard", { { "verb", "home" } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    const std::string left = report.value("left", "");
    say((left.empty() ? "The Home Screen was in front already. " : "Left " + left + " for the Home Screen. ")
            + describeDevice(report["device"]),
        report);
    return ExitStatus::Done;
}

ExitStatus phoneExit(const phone::PhoneDirectory& directory, const std::string& identifier)
{
    const Json report = askPhone(directory, "SpringBoard", { { "verb", "exit" }, { "application", identifier } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
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
    say(out.str(), report);
    return ExitStatus::Done;
}

} // namespace cli
