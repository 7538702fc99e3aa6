#include "phone/device/levels.h"

#include "phone/system/journal.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/property_list_file.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view file = "/var/db/hardware_levels.plist";
constexpr std::string_view volumeKey = "media volume";
constexpr std::string_view brightnessKey = "brightness";
constexpr double newDeviceLevel = 0.5;

struct Levels {
    double mediaVolume;
    double brightness;

    double& operator[](HardwareLevel level) { return level == HardwareLevel::MediaVolume ? mediaVolume : brightness; }
    friend bool operator==(const Levels&, const Levels&) = default;
};

std::optional<double> levelFrom(std::optional<double> value)
{
    if (!value || std::isnan(*value))
        return std::nullopt;
    return std::clamp(*value, 0.0, 1.0) + 0.0; // the sum has no negative zero
}

Levels stored()
{
    const DictionaryValue stored = pairsOf(dictionaryWithContentsOfFile(file));
    return { levelFrom(asDouble(stored[volumeKey])).value_or(newDeviceLevel),
        levelFrom(asDouble(stored[brightnessKey])).value_or(newDeviceLevel) };
}

Levels& levels()
{
    static auto* const present = new Levels(stored());
    return *present;
}

std::string& problem()
{
    static auto* const present = new std::string;
    return *present;
}

bool isWriteQueued = false;

void write()
{
    static auto* const written = new Levels(stored());
    isWriteQueued = false;
    problem().clear();
    if (*written == levels())
        return;
    constexpr PropertyListFileKind kind { PropertyListRoot::Dictionary, PropertyListFormat::Binary, 0644 };
    const WriteOutcome outcome = changePropertyListFile(std::string(file), kind, [](const id& present) {
        return dictionaryBySetting(dictionaryBySetting(present, brightnessKey, real(levels().brightness)), volumeKey,
            real(levels().mediaVolume));
    });
    if (outcome.isDone()) {
        *written = levels();
    } else {
        problem() = "the levels aren't kept: " + outcome.problem;
        journal(JournalEvent::Note, problem());
    }
}

} // namespace

double hardwareLevel(HardwareLevel level)
{
    return levels()[level];
}

void setHardwareLevel(HardwareLevel level, double value)
{
    const auto held = levelFrom(value);
    if (!held)
        return;
    levels()[level] = *held;
    if (!std::exchange(isWriteQueued, true))
        dispatch_async(dispatch_get_main_queue(), write);
}

const std::string& unkeptLevels()
{
    return problem();
}

} // namespace phone
