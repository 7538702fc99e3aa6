#include "cli/command/arguments.h"
#include "cli/command/default_root.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "phone/launchservices/installed_applications.h"
#include "phone/supervisor/running_supervisor.h"
#include "platform/foundation/files.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <unistd.h>

/// The phones of this account, what is installed on one, and the end of one.

namespace cli {

using Json = nlohmann::json;
namespace fs = std::filesystem;

namespace {

bool isPhone(const fs::path& folder)
{
    std::error_code error;
    return fs::is_directory(folder / ".phone", error)
        || fs::is_directory(folder / "var/mobile/Library/Preferences", error);
}

/// The directories that this account's supervisors were started for.
void addRunningPhones(std::set<std::string>& roots)
{
    std::error_code error;
    for (const auto& process : fs::directory_iterator("/proc", error)) {
        const std::string name = process.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::ifstream file(process.path() / "cmdline", std::ios::binary);
        const std::string line { std::istreambuf_iterator<char>(file), {} };
        if (line.find("phone-supervisor") == std::string::npos)
            continue;
        constexpr std::string_view option("--root\0", 7);
        const std::size_t at = line.find(option);
        if (at == std::string::npos)
            continue;
        const std::string root = line.c_str() + at + option.size();
        if (phone::PhoneDirectory(root).supervisorProcess() != 0)
            roots.insert(root);
    }
}

ExitStatus listPhones(const phone::PhoneDirectory& directory)
{
    std::set<std::string> roots;
    std::error_code error;
    for (const std::string& usual : { directory.root(), defaultRoot() })
        if (!usual.empty() && isPhone(usual))
            roots.insert(usual);
    if (const std::string usual = defaultRoot(); !usual.empty())
        for (const auto& sibling : fs::directory_iterator(fs::path(usual).parent_path(), error))
            if (isPhone(sibling.path()))
                roots.insert(sibling.path().string());
    addRunningPhones(roots);
    std::string text;
    Json phones = Json::array();
    for (const std::string& root : roots) {
        const bool isUp = phone::PhoneDirectory(root).supervisorProcess() != 0;
        text += root + (isUp ? "  up\n" : "  down\n");
        phones.push_back({ { "root", root }, { "isUp", isUp } });
    }
    say(text.empty() ? "There is no phone; 'appledger phone up' makes one." : text, { { "phones", phones } });
    return ExitStatus::Done;
}

ExitStatus listApplications(const phone::PhoneDirectory& directory)
{
    if (const std::string problem = directory.problem(); !problem.empty())
        return refuse(problem);
    if (!platform::setDeviceRoot(directory.root()))
        return refuse("can't open " + directory.root() + " as the phone's root");
    std::string text;
    Json applications = Json::array();
    for (const phone::InstalledApplication& application : phone::installedApplications()) {
        text += application.displayName + "  " + application.bundleIdentifier + "  " + application.version
            + (application.isSystem ? "  the system's" : "") + (application.isPlaceholder ? "  offloaded" : "") + "\n";
        applications.push_back({ { "application", application.bundleIdentifier }, { "name", application.displayName },
            { "applicationVersion", application.version }, { "isOfSystem", application.isSystem },
            { "isOffloaded", application.isPlaceholder } });
    }
    say(text.empty() ? "No application is installed." : text, { { "applications", applications } });
    return ExitStatus::Done;
}

/// Down first; then all that is in the directory, and the directory.
ExitStatus erase(const phone::PhoneDirectory& directory)
{
    if (const std::string problem = directory.problem(); !problem.empty())
        return refuse(problem);
    if (!isPhone(directory.root()))
        return refuse(directory.root() + " is no phone's directory: nothing is removed");
    if (const auto supervisor = phone::RunningSupervisor::find(directory)) {
        constexpr auto patience = std::chrono::milliseconds { 7000 };
        supervisor->signal(SIGTERM);
        if (!supervisor->waitUntilEnded(patience))
            return refuse("the phone at " + directory.root() + " doesn't go down: nothing is removed");
    }
    std::error_code error;
    fs::remove_all(directory.root(), error);
    if (error)
        return refuse("can't remove " + directory.root() + ": " + error.message());
    say("The phone at " + directory.root() + " is gone.", { { "root", directory.root() } });
    return ExitStatus::Done;
}

Action erasing(Arguments& arguments)
{
    const auto isSure = std::make_shared<bool>(false);
    arguments.flag("--yes", *isSure, "without asking").example("--yes");
    return [isSure](const phone::PhoneDirectory& directory) {
        if (!*isSure)
            return refuseUsage(
                "this removes " + directory.root() + " with all that is in it; --yes says that you mean it");
        return erase(directory);
    };
}

constexpr VerbRow rows[] {
    { "phone list", "the phones of this account, and which are up", plain<listPhones> },
    { "phone apps", "the applications on the phone, up or down", plain<listApplications> },
    { "phone erase", "take the phone down and remove it with all that is on it", erasing },
};

} // namespace

extern const VerbRows phoneListVerbs { rows };

} // namespace cli
