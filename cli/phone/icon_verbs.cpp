#include "cli/phone/icon_verbs.h"

#include "cli/command/phone_client.h"
#include "phone/springboard/icons/removal.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
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
    if (report["completionCalled"].is_boolean())
        out << " The completion was " << (report["completionCalled"].get<bool>() ? "called." : "not called.");
    out << " Haptics: ";
    if (report["haptics"].empty())
        out << "none";
    for (std::size_t i = 0; i < report["haptics"].size(); ++i)
        out << (i == 0 ? "" : ", ") << report["haptics"][i].get<std::string>();
    out << '.';
    for (const Json& note : report["notes"])
        out << ' ' << note.get<std::string>() << '.';
    return out.str();
}

} // namespace

void addIconVerbs(CLI::App& phone, UninstallOptions& options, const std::function<void(PhoneAction)>& chosen)
{
    phone.add_subcommand("icons", "the Home Screen as the system has laid it out")->callback([chosen] {
        chosen(phoneIcons);
    });
    std::vector<std::string> roads;
    for (const phone::RemovalRoad& road : phone::removalRoads())
        roads.emplace_back(road.name);
    CLI::App* const uninstall = phone.add_subcommand("uninstall", "ask the system to remove an application");
    uninstall->add_option("ID", options.application, "bundle identifier")->required();
    uninstall->add_option("--road", options.road, "the method that is asked (default completion)")
        ->check(CLI::IsMember(roads));
    uninstall->callback([&options, chosen] {
        chosen([&options](const phone::PhoneDirectory& directory) { return phoneUninstall(directory, options); });
    });
}

ExitStatus phoneIcons(const phone::PhoneDirectory& directory)
{
    const Json report = askPhone(directory, "SpringBoard", { { "verb", "icons" } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    std::ostringstream text;
    for (const Json& icon : report["icons"])
        text << std::left << std::setw(28) << icon.value("application", "") << icon.value("name", "")
             << (icon.value("shown", false) ? "" : "  (not on the Home Screen)")
             << (icon.value("removable", false) ? "" : "  (can't be removed)") << '\n';
    say(text.str(), report);
    return ExitStatus::Done;
}

ExitStatus phoneUninstall(const phone::PhoneDirectory& directory, const UninstallOptions& options)
{
    const Json report = askPhone(directory, "SpringBoard",
        { { "verb", "uninstall" }, { "application", options.application }, { "road", options.road } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say(describeRemoval(report, options.application), report);
    return ExitStatus::Done;
}

} // namespace cli
