#include "cli/phone/device_verbs.h"

#include "cli/command/phone_client.h"
#include "cli/phone/phone_commands.h"
#include "phone/system/journal.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;
using phone::levelText;

namespace {

ExitStatus setLevel(const phone::PhoneDirectory& directory, std::string_view verb, const DeviceOptions& options)
{
    Json request { { "verb", verb } };
    if (options.level)
        request["level"] = *options.level;
    const Json report = askPhone(directory, "SpringBoard", request);
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say(describeDevice(report["device"]), report);
    return ExitStatus::Done;
}

} // namespace

void addDeviceVerbs(CLI::App& phone, DeviceOptions& options, const std::function<void(DeviceAction)>& chosen)
{
    CLI::App* const launch = phone.add_subcommand("launch", "bring an application to the front, as a tap does");
    launch->add_option("ID", options.identifier, "bundle identifier")->required();
    launch->callback([&options, chosen] {
        chosen([&options](const auto& directory) { return phoneOpen(directory, "tap", { options.identifier }); });
    });
    for (const auto& [name, description] : { std::pair { "volume", "the volume of media, or set it" },
             std::pair { "brightness", "the brightness of the screen, or set it" } }) {
        CLI::App* const verb = phone.add_subcommand(name, description);
        verb->add_option("VALUE", options.level, "from 0 to 1")->check(CLI::Range(0.0, 1.0));
        verb->callback([&options, chosen, name = name] {
            chosen([&options, name](const auto& directory) { return setLevel(directory, name, options); });
        });
    }
}

std::string describeDevice(const Json& device)
{
    std::string text = "Volume " + levelText(device.value("volume", 0.0)) + ", brightness "
        + levelText(device.value("brightness", 0.0)) + ".";
    if (const Json& hud = device["hud"]; hud.is_object())
        text += " The volume last showed as " + levelText(hud.value("volume", 0.0)) + ", "
            + std::to_string(static_cast<long>(hud.value("secondsAgo", 0.0))) + " s ago.";
    for (const Json& reason : device["assertions"])
        text += " The screen stays awake for " + reason.get<std::string>() + ".";
    return text;
}

} // namespace cli
