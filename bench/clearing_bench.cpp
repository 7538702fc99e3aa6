#include "phone/process/process_definition.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/roads.h"
#include "phone/system/journal.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/user_defaults.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

/// Clears a cache folder of many small files through the exit of its application, in a SpringBoard with the library
/// loaded, beside `rm -rf` of a copy on the same file system; and measures taps on the Home Screen while a folder is
/// being cleared, beside taps while none is.
///
///     clearing_bench [FILES] [DIRECTORY] [ROUNDS]

using namespace platform;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

namespace {

constexpr const char* application = "com.example.notes";
constexpr const char* container = "/var/mobile/Containers/Data/Application/notes";

struct Options {
    int files;
    fs::path directory;
    int rounds;
    std::string library;
};

double milliseconds(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

[[noreturn]] void fail(const char* what)
{
    std::perror(what);
    std::exit(1);
}

void fill(const fs::path& folder, int files)
{
    fs::create_directories(folder);
    const int directory = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    const std::string content(100, 'x');
    for (int index = 0; index < files; ++index) {
        const int file
            = ::openat(directory, ("cache-" + std::to_string(index) + ".bin").c_str(), O_WRONLY | O_CREAT, 0644);
        if (file < 0 || ::write(file, content.data(), content.size()) < 0)
            fail("can't write the files to clear");
        ::close(file);
    }
    ::close(directory);
}

/// A device with the application, its container and the policy to clear it.
void makeDevice(const fs::path& root)
{
    fs::create_directories(root);
    setDeviceRoot(root);
    const auto write = [](const std::string& path, const id& value) {
        if (createDirectories(pathByDeletingLastComponent(path)) != 0
            || writePropertyList(value, path, PropertyListFormat::Binary) != 0)
            fail("can't make the device");
    };
    write("/Applications/Notes.app/Info.plist", dictionary({ { "CFBundleIdentifier", string(application) } }));
    write(std::string(container) + "/.com.apple.mobile_container_manager.metadata.plist",
        dictionary({ { "MCMMetadataIdentifier", string(application) } }));
    write("/var/mobile/Library/Preferences/com.merrowlane.appledger.plist",
        dictionary({ { "ALAutoClearCacheApps", array({ application }) } }));
}

void startSpringBoard(const std::string& library)
{
    const SystemVersion version { 16, 0, 0 };
    setProcessFacts({ "com.apple.springboard", "SpringBoard", version });
    phone::registerClassesOfProcess("SpringBoard", "com.apple.springboard", version);
    if (!::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL))
        fail(::dlerror());
    phone::processDefinition("SpringBoard")->start();
}

/// Runs the measurement in a process of its own and returns the numbers that it wrote.
template <class Measure> std::vector<double> inProcess(Measure measure)
{
    int ends[2];
    if (::pipe(ends) != 0)
        fail("pipe");
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(ends[0]);
        for (const double value : measure())
            if (::write(ends[1], &value, sizeof value) != sizeof value)
                ::_exit(1);
        ::_exit(0);
    }
    ::close(ends[1]);
    std::vector<double> values;
    for (double value; ::read(ends[0], &value, sizeof value) == sizeof value;)
        values.push_back(value);
    ::close(ends[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    if (status != 0 || values.empty())
        fail("a measurement failed");
    return values;
}

double removeWithRm(const fs::path& folder)
{
    ::sync();
    const auto start = Clock::now();
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::execlp("rm", "rm", "-rf", folder.c_str(), nullptr);
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    const double taken = milliseconds(start);
    if (status != 0 || fs::exists(folder))
        fail("rm");
    return taken;
}

/// With the clock held all queues run on this thread, so that the time is that of the whole work.
double clearThroughExit(const Options& options, const fs::path& root)
{
    ::sync();
    return inProcess([&]() -> std::vector<double> {
        setDeviceRoot(root);
        holdClock();
        startSpringBoard(options.library);
        phone::enterRoad("tap", { application });
        const auto start = Clock::now();
        phone::endProcessOf(application);
        runUntilIdle();
        return { milliseconds(start) };
    }).front();
}

std::vector<double> taps(const Options& options, const fs::path& root, bool clearing)
{
    return inProcess([&] {
        setDeviceRoot(root);
        startSpringBoard(options.library);
        const fs::path caches = root / fs::path(container).relative_path() / "Library/Caches";
        phone::enterRoad("tap", { application });
        phone::enterRoad("tap", { application });
        if (clearing)
            phone::endProcessOf(application);
        std::vector<double> microseconds;
        while (clearing ? !fs::is_empty(caches) : microseconds.size() < 2000)
            for (int tap = 0; tap < 20; ++tap) {
                const auto start = Clock::now();
                phone::enterRoad("tap", { application });
                microseconds.push_back(milliseconds(start) * 1000);
                phone::pressHome();
                phone::takeJournal();
                std::this_thread::sleep_for(std::chrono::microseconds(500));
            }
        return microseconds;
    });
}

double quantile(std::vector<double> values, double share)
{
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void printTaps(const char* what, const std::vector<double>& microseconds)
{
    std::printf("%-24s %6zu taps  median %7.1f us  p99 %7.1f us\n", what, microseconds.size(),
        quantile(microseconds, 0.5), quantile(microseconds, 0.99));
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const fs::path parent = argumentCount > 2 ? fs::path(arguments[2]) : fs::temp_directory_path();
    std::string pattern = parent / "appledger-clearing.XXXXXX";
    if (!::mkdtemp(pattern.data()))
        fail("can't make a directory for the device");
    const Options options { argumentCount > 1 ? std::atoi(arguments[1]) : 100'000, pattern,
        argumentCount > 3 ? std::atoi(arguments[3]) : 5,
        fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "lib/libAppLedger.so" };
    const fs::path root = options.directory / "root";
    const fs::path caches = root / fs::path(container).relative_path() / "Library/Caches";
    inProcess([&]() -> std::vector<double> {
        makeDevice(root);
        return { 0 };
    });

    std::vector<double> ratios;
    for (int round = 0; round < options.rounds; ++round) {
        const fs::path copy = options.directory / "copy";
        fill(caches, options.files);
        fill(copy, options.files);
        // Taken in turns, so that neither has the better place in every round.
        const bool rmFirst = round % 2 == 0;
        const double before = rmFirst ? removeWithRm(copy) : 0;
        const double clear = clearThroughExit(options, root);
        const double rm = rmFirst ? before : removeWithRm(copy);
        if (!fs::is_empty(caches))
            fail("the caches weren't cleared");
        ratios.push_back(clear / rm);
        std::printf(
            "%d files: cleared in %7.1f ms, rm -rf %7.1f ms, ratio %.2f\n", options.files, clear, rm, ratios.back());
    }
    std::printf("median ratio %.2f\n", quantile(ratios, 0.5));

    printTaps("taps, nothing else", taps(options, root, false));
    fill(caches, options.files);
    printTaps("taps during a clearing", taps(options, root, true));
    fs::remove_all(options.directory);
}
