#include "core/preference_domain.h"
#include "phone/process/process_definition.h"
#include "platform/darwin/system.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// The load of the library in the SpringBoard role, with 30 keys of 100 identifiers in the domain: time and
/// resident memory of dlopen() in a fresh process that has the phone's classes. Beside it the same for a
/// process whose domain is empty.
///
///     load_bench [RUNS]

using namespace appledger;
using namespace platform;
using Clock = std::chrono::steady_clock;

namespace {

struct Load {
    double milliseconds;
    double megabytes;
};

double residentMegabytes()
{
    std::ifstream statistics("/proc/self/statm");
    long total = 0;
    long resident = 0;
    statistics >> total >> resident;
    return static_cast<double>(resident * ::sysconf(_SC_PAGESIZE)) / 1e6;
}

void fillDomain()
{
    const auto defaults = preferences();
    int filled = 0;
    const auto fill = [&](const std::string& key) {
        std::vector<id> items;
        for (int index = 0; index < 100; ++index)
            items.push_back(string("com.example.application" + std::to_string(filled * 1000 + index)));
        defaults->setObject(array(std::move(items)), key);
        ++filled;
    };
    for (const PreferenceKey& key : preferenceKeys())
        if (key.type == PreferenceType::IdentifierList && !key.isPrefix)
            fill(std::string(key.name));
    while (filled < 30)
        fill("CustomBlockedApplications/com.example.source" + std::to_string(filled));
    defaults->synchronize();
}

Load loadOnce(const std::string& root, const std::string& library)
{
    int ends[2];
    if (::pipe(ends) != 0)
        std::exit(1);
    const pid_t pid = ::fork();
    if (pid == 0) {
        setDeviceRoot(root);
        const SystemVersion version { 16, 0, 0 };
        setProcessFacts({ "com.apple.springboard", "SpringBoard", version });
        phone::registerClassesOfProcess("SpringBoard", "com.apple.springboard", version);
        const double before = residentMegabytes();
        const auto start = Clock::now();
        if (!::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL)) {
            std::fprintf(stderr, "%s\n", ::dlerror());
            ::_exit(1);
        }
        const Load load { std::chrono::duration<double, std::milli>(Clock::now() - start).count(),
            residentMegabytes() - before };
        ::_exit(::write(ends[1], &load, sizeof load) == sizeof load ? 0 : 1);
    }
    Load load {};
    if (::read(ends[0], &load, sizeof load) != sizeof load)
        std::exit(1);
    ::close(ends[0]);
    ::close(ends[1]);
    ::waitpid(pid, nullptr, 0);
    return load;
}

void measure(const char* what, const std::string& root, const std::string& library, int runs)
{
    std::vector<double> milliseconds;
    std::vector<double> megabytes;
    for (int run = 0; run < runs; ++run) {
        const Load load = loadOnce(root, library);
        milliseconds.push_back(load.milliseconds);
        megabytes.push_back(load.megabytes);
    }
    std::ranges::sort(milliseconds);
    std::ranges::sort(megabytes);
    std::printf("%-32s %4d runs  median %6.2f ms  %5.2f MB\n", what, runs, milliseconds[milliseconds.size() / 2],
        megabytes[megabytes.size() / 2]);
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int runs = argumentCount > 1 ? std::atoi(arguments[1]) : 100;
    const std::string library
        = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path() / "lib/libAppLedger.so";
    for (const bool filled : { false, true }) {
        char folder[] = "/tmp/appledger-bench.XXXXXX";
        const std::string root = ::mkdtemp(folder);
        const pid_t writer = ::fork();
        if (writer == 0) {
            setDeviceRoot(root);
            if (filled)
                fillDomain();
            ::_exit(0);
        }
        ::waitpid(writer, nullptr, 0);
        measure(filled ? "30 keys of 100 identifiers" : "no preferences, peer", root, library, runs);
        std::filesystem::remove_all(root);
    }
}
