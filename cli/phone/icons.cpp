#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/phone/reasons.h"
#include "core/policies.h"
#include "phone/springboard/icons/removal.h"

#include <algorithm>
#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string describeRemoval(const Json& report, const std::string& application)
{
    std::ostringstream out;
    out << application << (report.value("removed", false) ? " was removed." : " was not removed.") << " Its icon "
        << (report.value("offered", false) ? "offered" : "didn't offer") << " the removal.";
    if (isVerbose() && report["completionCalled"].is_boolean())
        out << " The completion was " << (report["completionCalled"].get<bool>() ? "called." : "not called.");
    out << whyText(report);
    for (std::size_t i = 0; i < report["haptics"].size(); ++i)
        out << (i == 0 ? " Haptics: " : ", ") << report["haptics"][i].get<std::string>();
    out << (report["haptics"].empty() ? "" : ".");
    for (const Json& note : report["notes"])
        out << ' ' << note.get<std::string>() << '.';
    return out.str();
}

std::string describeIcons(const Json& report)
{
    std::ostringstream text;
    for (const Json& icon : report["icons"])
        text << std::left << std::setw(34) << icon.value("application", "") << icon.value("name", "")
             << (icon.value("shown", false) ? "" : "  (not on the Home Screen)")
             << (icon.value("removable", false) ? "" : "  (can't be removed)") << whyText(icon) << '\n';
    return text.str();
}

/// The Home Screen as it is laid out, and what is installed and doesn't stand there.
ExitStatus listIcons(const phone::PhoneDirectory& directory)
{
    using namespace appledger;
    return tellAnswer(
        directory, "SpringBoard", { { "verb", "icons" } },
        [&directory](Json& report) {
            for (Json& icon : report["icons"]) {
                const std::string application = icon.value("application", "");
                if (!icon.value("shown", false) && isListed(directory, policy::hidden.key, application))
                    addListReason(icon, policy::hidden.key, application);
                else if (!icon.value("removable", false)
                    && isListed(directory, policy::blockedUninstall.key, application))
                    addListReason(icon, policy::blockedUninstall.key, application);
            }
        },
        describeIcons);
}

/// Done also when the application wasn't removed: that is the answer.
Action uninstall(Arguments& arguments)
{
    struct Options {
        Word application;
        Word road { "completion" };
    };
    const auto options = std::make_shared<Options>();
    std::vector<std::string> roads;
    for (const phone::RemovalRoad& road : phone::removalRoads())
        roads.emplace_back(road.name);
    arguments.add("ID", options->application, "bundle identifier").required();
    arguments.add("--road", options->road, "the method that is asked (default completion)").oneOf(roads);
    return [options](const phone::PhoneDirectory& directory) {
        const std::string& application = options->application;
        return tellAnswer(
            directory, "SpringBoard",
            { { "verb", "uninstall" }, { "application", application }, { "road", options->road.text() } },
            [&](Json& report) {
                report["application"] = application;
                constexpr std::string_view key = appledger::policy::blockedUninstall.key;
                if (!report.value("removed", false) && isListed(directory, key, application))
                    addListReason(report, key, application);
            },
            [&application](const Json& report) { return describeRemoval(report, application); });
    };
}

constexpr VerbRow rows[] {
    { "phone icons", "the Home Screen as the system has laid it out", plain<listIcons>, "icons" },
    { "phone uninstall", "ask the system to remove an application", uninstall, "uninstall" },
};

} // namespace

extern const VerbRows iconVerbs { rows };

} // namespace cli
