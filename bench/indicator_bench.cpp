#include "allocation_count.h"

#include "core/policies.h"
#include "entry/load_time_initialisers.h"
#include "phone/process/process_definition.h"
#include "phone/springboard/icons/SBIconView.h"
#include "phone/springboard/icons/icon_list.h"
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

/// The layout of 200 icon views in a SpringBoard: of the system alone, and with the library, by whether the running
/// indicator is on and the icons' applications run. Time and allocations of one icon's layout.

using namespace platform;
using Clock = std::chrono::steady_clock;

namespace {

constexpr std::size_t iconCount = 200;
constexpr const char* domainFile = "/var/mobile/Library/Preferences/com.merrowlane.appledger.plist";

void write(const std::string& path, const id& value)
{
    if (createDirectories(pathByDeletingLastComponent(path)) != 0
        || writePropertyList(value, path, PropertyListFormat::Binary) != 0) {
        std::perror("can't make the device");
        std::exit(1);
    }
}

void setIndicator(bool enabled)
{
    write(domainFile, dictionary({ { "RunningIndicatorEnabled", boolean(enabled) } }));
    appledger::reload(appledger::policy::runningIndicator);
}

std::vector<id> makeIconViews()
{
    std::vector<id> views;
    for (const phone::HomeScreenIcon& icon : phone::homeScreenIcons())
        views.push_back(phone::makeIconView(
            send<"applicationIconForBundleIdentifier:">(phone::iconModel(), string(icon.bundleIdentifier)),
            "SBIconLocationRoot", CGRectMake(0, 0, 88, 82)));
    return views;
}

void setRunning(const std::vector<id>& views, bool running)
{
    for (const id& view : views) {
        const id application = send<"application">(send<"icon">(view));
        const id state = running ? send<"new">(id(objc_getClass("SBApplicationProcessState"))) : nil;
        send<"setProcessState:", void>(application, state);
    }
}

/// The median of many rounds over all views.
void measure(const char* what, const std::vector<id>& views)
{
    constexpr int rounds = 101;
    std::vector<double> nanoseconds;
    std::size_t allocations = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::size_t before = allocationCount();
        const Clock::time_point start = Clock::now();
        for (const id& view : views)
            send<"layoutSubviews", void>(view);
        nanoseconds.push_back(
            std::chrono::duration<double, std::nano>(Clock::now() - start).count() / static_cast<double>(views.size()));
        allocations = allocationCount() - before;
        runUntilIdle();
    }
    std::ranges::nth_element(nanoseconds, nanoseconds.begin() + rounds / 2);
    std::printf("%-34s %9.0f ns %8.2f allocations\n", what, nanoseconds[rounds / 2],
        static_cast<double>(allocations) / static_cast<double>(views.size()));
}

} // namespace

int main()
{
    std::string pattern = std::filesystem::temp_directory_path() / "indicator-bench-XXXXXX";
    const std::filesystem::path root = ::mkdtemp(pattern.data());
    setDeviceRoot(root);
    for (std::size_t index = 0; index < iconCount; ++index) {
        const std::string identifier = "com.example.application" + std::to_string(index);
        write("/Applications/" + identifier + ".app/Info.plist",
            dictionary({ { "CFBundleIdentifier", string(identifier) },
                { "CFBundleDisplayName", string("Name " + std::to_string(index)) } }));
    }
    write(domainFile, dictionary({ { "RunningIndicatorEnabled", boolean(false) } }));
    const SystemVersion version { 16, 0, 0 };
    setProcessFacts({ "com.apple.springboard", "SpringBoard", version });
    phone::registerClassesOfProcess("SpringBoard", "com.apple.springboard", version);
    phone::processDefinition("SpringBoard")->start();

    const std::vector<id> views = makeIconViews();
    std::printf("one icon's layout, %zu icon views\n", views.size());
    measure("the system alone", views);
    appledger::initializeLibrary();
    measure("indicator off, not running", views);
    setRunning(views, true);
    measure("indicator off, running", views);
    setRunning(views, false);
    setIndicator(true);
    measure("indicator on, not running", views);
    setRunning(views, true);
    measure("indicator on, running", views);
    std::filesystem::remove_all(root);
}
