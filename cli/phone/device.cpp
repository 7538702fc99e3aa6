#include "cli/phone/device.h"

#include "cli/command/arguments.h"
#include "cli/command/part.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "phone/system/journal.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;
using phone::levelText;

namespace {

Action level(Arguments& arguments, const char* verb)
{
    const auto wanted = std::make_shared<std::vector<Word>>();
    arguments.add("VALUE", *wanted, "from 0 to 1, or a percentage: 80%").example("80%");
    return [verb, wanted](const phone::PhoneDirectory& directory) {
        Json request { { "verb", verb } };
        if (!wanted->empty()) {
            std::string text;
            for (const Word& word : *wanted)
                text += word.text();
            const auto part = parsePart(text);
            if (!part)
                return refuseUsage("that is no " + std::string(verb) + ": it is " + std::string(expectedPart));
            request["level"] = *part;
        }
        return tellAnswer(
            directory, "SpringBoard", request, [](const Json& report) { return describeDevice(report["device"]); });
    };
}

Action volume(Arguments& arguments)
{
    return level(arguments, "volume");
}

Action brightness(Arguments& arguments)
{
    return level(arguments, "brightness");
}

Action appearance(Arguments& arguments)
{
    const auto style = std::make_shared<Word>();
    arguments.add("STYLE", *style, "dark or light").oneOf({ "dark", "light" });
    return [style](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard", { { "verb", "appearance" }, { "style", style->text() } },
            [](const Json& report) { return "The phone is " + report.value("appearance", "") + "."; });
    };
}

constexpr VerbRow rows[] {
    { "phone volume", "the volume of media, or set it", volume, "volume" },
    { "phone brightness", "the brightness of the screen, or set it", brightness, "brightness" },
    { "phone appearance", "whether the system is dark or light, or make it so", appearance, "appearance" },
};

} // namespace

extern const VerbRows deviceVerbs { rows };

std::string describeDevice(const Json& device)
{
    std::string text = "Volume " + levelText(device.value("volume", 0.0)) + ", brightness "
        + levelText(device.value("brightness", 0.0)) + ".";
    if (const Json& hud = device["hud"]; isVerbose() && hud.is_object())
        text += " The volume last showed as " + levelText(hud.value("volume", 0.0)) + ", "
            + std::to_string(static_cast<long>(hud.value("secondsAgo", 0.0))) + " s ago.";
    for (const Json& reason : device["assertions"])
        text += " The screen stays awake for " + reason.get<std::string>() + ".";
    return text;
}

std::string describeDeviceChanges(const Json& report)
{
    const Json device = report.value("device", Json::object());
    if (isVerbose() && !device.empty())
        return " " + describeDevice(device);
    bool isVolume = false;
    bool isBrightness = false;
    for (const Json& entry : report.value("journal", Json::array())) {
        const std::string event = entry.value("event", "");
        isVolume = isVolume || event == phone::journalEventName(phone::JournalEvent::Volume);
        isBrightness = isBrightness || event == phone::journalEventName(phone::JournalEvent::Brightness);
    }
    return (isVolume ? " Volume now " + levelText(device.value("volume", 0.0)) + "." : "")
        + (isBrightness ? " Brightness now " + levelText(device.value("brightness", 0.0)) + "." : "");
}

} // namespace cli
