#include "phone/device/levels.h"

#include "platform/dispatch/queue.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cstdio>

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
    bool writing = false;

    double& operator[](HardwareLevel level) { return level == HardwareLevel::MediaVolume ? mediaVolume : brightness; }
};

Levels& levels()
{
    static auto* const present = [] {
        const DictionaryValue stored = pairsOf(dictionaryWithContentsOfFile(file));
        return new Levels { asDouble(stored[volumeKey]).value_or(newDeviceLevel),
            asDouble(stored[brightnessKey]).value_or(newDeviceLevel) };
    }();
    return *present;
}

void write()
{
    levels().writing = false;
    int error = createDirectories(pathByDeletingLastComponent(file));
    if (error == 0)
        error = writePropertyList(
            dictionary({ { brightnessKey, real(levels().brightness) }, { volumeKey, real(levels().mediaVolume) } }),
            file, PropertyListFormat::Binary);
    if (error != 0)
        std::fprintf(stderr, "the levels aren't kept: error %d\n", error);
}

} // namespace

double hardwareLevel(HardwareLevel level)
{
    return levels()[level];
}

void setHardwareLevel(HardwareLevel level, double value)
{
    levels()[level] = std::clamp(value, 0.0, 1.0);
    if (!levels().writing)
        dispatch_async(dispatch_get_main_queue(), write);
    levels().writing = true;
}

} // namespace phone
