#include "allocation_count.h"

#include "entry/load_time_initialisers.h"
#include "icons/icon_cache.h"
#include "icons/icon_image_info.h"
#include "phone/process/process_definition.h"
#include "phone/springboard/icons/icon_list.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

/// What the Home Screen's question for an icon's picture takes: of the system alone, with the library where the owner
/// has chosen none, from an icon file of several sizes, and from the cache. Time and allocations of one call.
///
///     icon_bench

using namespace platform;
using Clock = std::chrono::steady_clock;

namespace {

constexpr const char* notes = "com.example.notes";

void write(const std::string& path, const id& value)
{
    if (createDirectories(pathByDeletingLastComponent(path)) != 0
        || writePropertyList(value, path, PropertyListFormat::Binary) != 0) {
        std::perror("can't make the device");
        std::exit(1);
    }
}

/// A picture with soft colours, edges and grain, as a photograph has them, and round corners.
std::string pictureOfSide(double side)
{
    UIGraphicsBeginImageContextWithOptions({ side, side }, false, 1);
    const id colors(classNamed<"UIColor">());
    const id paths(classNamed<"UIBezierPath">());
    send<"addClip", void>(
        send<"bezierPathWithRoundedRect:cornerRadius:">(paths, CGRectMake(0, 0, side, side), std::round(side * 0.224)));
    send<"drawLinearGradient:from:to:", void>(UIGraphicsGetCurrentContext(),
        array({ send<"colorWithRed:green:blue:alpha:">(colors, 0.2, 0.5, 0.9, 1.0),
            send<"colorWithRed:green:blue:alpha:">(colors, 0.9, 0.6, 0.3, 1.0) }),
        CGPointMake(0, 0), CGPointMake(side, side));
    std::uint32_t state = 1;
    const auto next = [&state] { return (state = state * 1664525U + 1013904223U) >> 8; };
    for (int grain = 0; grain < 4000; ++grain) {
        const double size = 1 + next() % 100 / 100.0 * side / 24;
        send<"setFill", void>(send<"colorWithRed:green:blue:alpha:">(
            colors, next() % 100 / 100.0, next() % 100 / 100.0, next() % 100 / 100.0, 0.15));
        send<"fill", void>(send<"bezierPathWithOvalInRect:">(
            paths, CGRectMake(next() % 10000 / 10000.0 * side, next() % 10000 / 10000.0 * side, size, size)));
    }
    const id image = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    const auto bytes = asData(UIImagePNGRepresentation(image));
    return bytes ? bytes->text() : "";
}

template <class Prepare, class Call>
void measure(const std::string& what, int callsOfRound, const Prepare& prepare, const Call& call)
{
    constexpr int rounds = 41;
    std::vector<double> microseconds;
    std::size_t allocations = 0;
    for (int round = 0; round < rounds; ++round) {
        prepare();
        const std::size_t before = allocationCount();
        const Clock::time_point start = Clock::now();
        for (int index = 0; index < callsOfRound; ++index)
            call();
        microseconds.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count() / callsOfRound);
        allocations = allocationCount() - before;
    }
    std::ranges::nth_element(microseconds, microseconds.begin() + rounds / 2);
    std::printf("%-46s %10.2f us %8.1f allocations\n", what.c_str(), microseconds[rounds / 2],
        static_cast<double>(allocations) / callsOfRound);
}

} // namespace

int main()
{
    char directory[] = "/tmp/icon_bench.XXXXXX";
    if (!::mkdtemp(directory) || !setDeviceRoot(directory))
        return 1;
    write(std::string("/Applications/") + notes + ".app/Info.plist",
        dictionary({ { "CFBundleIdentifier", string(notes) } }));
    const SystemVersion version = parseSystemVersion("16.0").value();
    const auto& process = *phone::processDefinition("SpringBoard");
    setProcessFacts({ std::string(process.bundleIdentifier), "SpringBoard", version });
    phone::registerClassesOfProcess("SpringBoard", process.bundleIdentifier, version);

    const auto icon = [] { return send<"leafIconForIdentifier:">(phone::iconModel(), string(notes)); };
    const appledger::SBIconImageInfo info { { 60, 60 }, 3, 13.5 };
    const auto ask = [&] { return send<"iconImageWithInfo:">(icon(), info); };
    const auto nothing = [] {};
    measure("the system alone (a recorded drawing)", 100, nothing, ask);
    appledger::initializeLibrary();
    process.start();
    runUntilIdle();
    measure("no picture of the owner's", 100, nothing, ask);
    const std::string file = std::string(appledger::customIconDirectory) + "/" + notes + ".png";
    if (createDirectories(appledger::customIconDirectory) != 0)
        return 1;
    for (const double side : { 180.0, 512.0, 1024.0, 3024.0 }) {
        const std::string bytes = pictureOfSide(side);
        if (writeFileAtomically(file, bytes) != 0)
            return 1;
        const auto forget = [] { appledger::ALClearSpecificIconCache(); };
        measure("from a file of " + std::to_string(static_cast<int>(side)) + " pixels, "
                + std::to_string(bytes.size() / 1024) + " KB",
            1, forget, ask);
    }
    measure("from the cache", 1000, nothing, ask);
    std::filesystem::remove_all(directory);
    return 0;
}
