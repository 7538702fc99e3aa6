#include "cli/policy/side_file_policies.h"

#include "cli/command/phone_client.h"
#include "cli/policy/policy_commands.h"
#include "core/notification_names.h"
#include "phone/system/journal.h"
#include "platform/darwin/bus.h"
#include "platform/foundation/files.h"
#include "state/app_brightness_manager.h"
#include "state/app_mute_manager.h"

#include <charconv>
#include <chrono>
#include <cstring>
#include <nlohmann/json.hpp>
#include <ostream>

namespace cli {

using namespace appledger;
using namespace platform;
using Json = nlohmann::json;

namespace {

/// Opens the phone for writing that file; empty, or what went wrong.
std::optional<std::string> prepare(const phone::PhoneDirectory& directory, const std::string& path)
{
    if (const auto problem = openForWriting(directory))
        return problem;
    if (const int error = createDirectories(pathByDeletingLastComponent(path)))
        return "can't make the folder of " + path + ": " + std::strerror(error);
    return std::nullopt;
}

ExitStatus refuseWrite(const std::string& path, int error)
{
    return refuse("can't write " + path + ": " + std::strerror(error));
}

std::optional<double> parseLevel(const std::string& text)
{
    double level = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, level);
    return error == std::errc() && rest == end && level == level ? std::optional(level) : std::nullopt;
}

} // namespace

ExitStatus mutePolicy(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier, bool muted)
{
    if (const auto problem = prepare(directory, GetAppMutePrefPath()))
        return refuse(*problem);
    const std::string path = GetAppMutePrefPath();
    if (const int error = writeMuted(bundleIdentifier, muted))
        return refuseWrite(path, error);
    say(bundleIdentifier + (muted ? " is silent" : " isn't silent")
            + " while it is in front. No notification belongs to the list: it is read at each use.",
        { { "ok", true }, { "application", bundleIdentifier }, { "muted", muted }, { "file", path } });
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
    if (const auto problem = prepare(directory, appBrightnessPreferencePath()))
        return refuse(*problem);
    const std::string path = appBrightnessPreferencePath();
    const bool told = connectToPhone(directory);
    if (const int error = writeBrightness(bundleIdentifier, level))
        return refuseWrite(path, error);
    if (told)
        flushBus(std::chrono::seconds { 5 });
    AppBrightnessManager& manager = AppBrightnessManager::sharedManager();
    manager.reloadConfig();
    const auto stored = manager.levelFor(bundleIdentifier);
    say(bundleIdentifier
            + (stored ? " has the brightness " + phone::levelText(*stored) + " while it is in front."
                      : " has no brightness of its own.")
            + (told ? " Posted " + std::string(notification::brightnessChanged) + "."
                    : " The phone isn't up, so nobody was told."),
        { { "ok", true }, { "application", bundleIdentifier }, { "brightness", stored ? Json(*stored) : Json() },
            { "file", path }, { "notification", notification::brightnessChanged }, { "posted", told } });
    return ExitStatus::Done;
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
