#include "cli/policy/side_file_policies.h"

#include "cli/command/phone_client.h"
#include "cli/policy/policy_commands.h"
#include "core/notification_names.h"
#include "core/side_file.h"
#include "phone/system/journal.h"
#include "platform/darwin/bus.h"
#include "state/app_brightness_manager.h"
#include "state/app_mute_manager.h"

#include <charconv>
#include <chrono>
#include <nlohmann/json.hpp>
#include <ostream>

namespace cli {

using namespace appledger;
using namespace platform;
using Json = nlohmann::json;

namespace {

std::optional<double> parseLevel(const std::string& text)
{
    double level = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, level);
    return error == std::errc() && rest == end && level == level ? std::optional(level) : std::nullopt;
}

void addSetAside(Json& object, const WriteOutcome& outcome)
{
    if (!outcome.setAside.empty())
        object["setAside"] = outcome.setAside;
}

} // namespace

ExitStatus mutePolicy(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier, bool muted)
{
    if (const auto problem = openForWriting(directory))
        return refuse(*problem);
    const WriteOutcome outcome = writeMuted(bundleIdentifier, muted);
    if (!outcome.isDone())
        return refuse(outcome.problem + describeSetAside(outcome.setAside));
    Json object { { "ok", true }, { "application", bundleIdentifier }, { "muted", muted },
        { "file", GetAppMutePrefPath() } };
    addSetAside(object, outcome);
    say(bundleIdentifier + (muted ? " is silent" : " isn't silent")
            + " while it is in front. No notification belongs to the list: it is read at each use."
            + describeSetAside(outcome.setAside),
        object);
    return ExitStatus::Done;
}

ExitStatus brightnessPolicy(
    const phone::PhoneDirectory& directory, const std::string& bundleIdentifier, const std::string& value)
{
    std::optional<double> level;
    if (value != "off") {
        level = parseLevel(value);
        if (!level)
            return refuse("a brightness is a number from 0 to 1, or off");
    }
    if (const auto problem = openForWriting(directory))
        return refuse(*problem);
    const bool told = connectToPhone(directory);
    const WriteOutcome outcome = writeBrightness(bundleIdentifier, level);
    if (!outcome.isDone())
        return refuse(outcome.problem + describeSetAside(outcome.setAside));
    if (told)
        flushBus(std::chrono::seconds { 5 });
    AppBrightnessManager& manager = AppBrightnessManager::sharedManager();
    manager.reloadConfig();
    const auto stored = manager.levelFor(bundleIdentifier);
    Json object { { "ok", true }, { "application", bundleIdentifier },
        { "brightness", stored ? Json(*stored) : Json() }, { "file", appBrightnessPreferencePath() },
        { "notification", notification::brightnessChanged }, { "posted", told } };
    addSetAside(object, outcome);
    say(bundleIdentifier
            + (stored ? " has the brightness " + phone::levelText(*stored) + " while it is in front."
                      : " has no brightness of its own.")
            + (told ? " Posted " + std::string(notification::brightnessChanged) + "."
                    : " The phone isn't up, so nobody was told.")
            + describeSetAside(outcome.setAside),
        object);
    return ExitStatus::Done;
}

std::optional<std::string> sideFileProblem()
{
    const std::pair<std::string, PropertyListFileKind> files[] { { GetAppMutePrefPath(), sideFileWithArray },
        { appBrightnessPreferencePath(), sideFileWithDictionary } };
    for (const auto& [path, kind] : files) {
        PropertyListFile file(path, kind);
        file.read();
        if (!file.problem().empty())
            return path + " can't be read: " + file.problem();
    }
    return std::nullopt;
}

void describeSideFiles(const std::string& bundleIdentifier, std::ostream& text, Json& object)
{
    if (AppMuteManager::sharedManager().isMuted(bundleIdentifier)) {
        text << "mute: listed\n";
        object["mute"] = true;
    }
    if (const auto level = AppBrightnessManager::sharedManager().levelFor(bundleIdentifier)) {
        text << "brightness: " << phone::levelText(*level) << '\n';
        object["brightness"] = *level;
    }
}

} // namespace cli
