#include "allocation_count.h"

#include "core/policies.h"
#include "entry/load_time_initialisers.h"
#include "phone/process/process_definition.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

/// What an application answers for its name and its badge, and what is done when its badge is set: of the system alone,
/// with the library, and with a badge of the owner's. Time and allocations of one call.

using namespace platform;
using Clock = std::chrono::steady_clock;

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* domainFile = "/var/mobile/Library/Preferences/com.merrowlane.appledger.plist";

void write(const std::string& path, const id& value)
{
    if (createDirectories(pathByDeletingLastComponent(path)) != 0
        || writePropertyList(value, path, PropertyListFormat::Binary) != 0) {
        std::perror("can't make the device");
        std::exit(1);
    }
}

/// The median of many rounds.
template <class Call> void measure(const std::string& what, int callsOfRound, const Call& call)
{
    constexpr int rounds = 101;
    std::vector<double> nanoseconds;
    std::size_t allocations = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::size_t before = allocationCount();
        const Clock::time_point start = Clock::now();
        for (int index = 0; index < callsOfRound; ++index)
            call();
        nanoseconds.push_back(std::chrono::duration<double, std::nano>(Clock::now() - start).count() / callsOfRound);
        allocations = allocationCount() - before;
        runUntilIdle();
    }
    std::ranges::nth_element(nanoseconds, nanoseconds.begin() + rounds / 2);
    std::printf("%-44s %9.1f ns %8.2f allocations\n", what.c_str(), nanoseconds[rounds / 2],
        static_cast<double>(allocations) / callsOfRound);
}

void measureAll(const std::string& with, const id& application)
{
    constexpr int many = 10'000;
    constexpr int few = 10;
    measure("displayName, " + with, many, [&] { send<"displayName">(application); });
    measure("badgeValue, " + with, many, [&] { send<"badgeValue">(application); });
    int badge = 0;
    measure("setBadgeValue:, " + with, few, [&] { send<"setBadgeValue:", void>(application, number(++badge)); });
}

} // namespace

int main()
{
    std::string pattern = std::filesystem::temp_directory_path() / "badge-bench-XXXXXX";
    const std::filesystem::path root = ::mkdtemp(pattern.data());
    setDeviceRoot(root);
    write(std::string("/Applications/Notes.app/Info.plist"),
        dictionary({ { "CFBundleIdentifier", string(notes) }, { "CFBundleDisplayName", string("Notes") } }));
    write(domainFile, dictionary({}));
    const SystemVersion version { 16, 0, 0 };
    setProcessFacts({ "com.apple.springboard", "SpringBoard", version });
    phone::registerClassesOfProcess("SpringBoard", "com.apple.springboard", version);
    phone::processDefinition("SpringBoard")->start();
    const id application = send<"applicationWithBundleIdentifier:">(
        send<"sharedInstance">(id(objc_getClass("SBApplicationController"))), string(notes));

    measureAll("the system alone", application);
    appledger::initializeLibrary();
    measureAll("with the library", application);
    write(domainFile, dictionary({ { "ALCustomBadges", dictionary({ { notes, number(2) } }) } }));
    appledger::reload(appledger::policy::customBadges);
    measureAll("with a badge of the owner's", application);
    std::filesystem::remove_all(root);
}
