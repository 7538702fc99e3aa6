#include "core/policies.h"
#include "core/preference_domain.h"
#include "platform/darwin/bus.h"
#include "platform/darwin/bus_daemon.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// From the moment at which a writer sets a policy to the moment at which the last process has reread it:
/// real processes, a real file, a real bus. Beside it the same list read back by a process that looks at
/// the file's time in a loop without pause, which is the fastest that can be had without a notification.
///
///     propagation_bench [READERS [WRITES [IDENTIFIERS]]]     identifiers in each of 30 keys of the domain
/// The phone's directory lies in $TMPDIR, or /tmp.

using namespace appledger;
using namespace platform;
using Clock = std::chrono::steady_clock;

namespace {

int reports = -1; ///< where a reader writes the time at which it has reread

void report()
{
    const std::int64_t now = Clock::now().time_since_epoch().count();
    if (::write(reports, &now, sizeof now) != sizeof now)
        ::_exit(1);
}

void rereadAndReport()
{
    reload(policy::blockedLaunch);
    report();
}

pid_t startNotifiedReader(const std::string& root, const std::string& address, int number)
{
    const pid_t pid = ::fork();
    if (pid != 0)
        return pid;
    setDeviceRoot(root);
    if (!connectBus(address, "Reader" + std::to_string(number), [] { ::_exit(0); }))
        ::_exit(1);
    reload(policy::blockedLaunch);
    CFNotificationCenterAddObserver(
        rereadAndReport, policy::blockedLaunch.notification, CFNotificationSuspensionBehavior::DeliverImmediately);
    report();
    runRunLoop();
    ::_exit(0);
}

pid_t startPollingReader(const std::string& root)
{
    const pid_t pid = ::fork();
    if (pid != 0)
        return pid;
    setDeviceRoot(root);
    reload(policy::blockedLaunch);
    auto stamp = fileStamp(preferenceFile);
    report();
    while (true) {
        const auto now = fileStamp(preferenceFile);
        if (now == stamp)
            continue;
        stamp = now;
        rereadAndReport();
    }
}

std::int64_t lastOf(int readEnd, int count)
{
    std::int64_t last = 0;
    for (int index = 0; index < count; ++index) {
        std::int64_t time = 0;
        if (::read(readEnd, &time, sizeof time) != sizeof time)
            std::exit(1);
        last = std::max(last, time);
    }
    return last;
}

void measure(const char* what, int readEnd, int readers, int writes, bool post)
{
    std::vector<double> microseconds;
    for (int index = 0; index < writes; ++index) {
        const std::int64_t start = Clock::now().time_since_epoch().count();
        const auto defaults = preferences();
        defaults->setObject(array({ "com.example.notes", index % 2 == 0 ? "com.example.chat" : "com.example.game" }),
            "ALBlockedLaunchApps");
        if (!defaults->synchronize())
            std::exit(1);
        if (post) {
            CFNotificationCenterPostNotification(policy::blockedLaunch.notification);
            flushBus(std::chrono::seconds { 1 });
        }
        microseconds.push_back(static_cast<double>(lastOf(readEnd, readers) - start) / 1000.0);
    }
    std::ranges::sort(microseconds);
    const auto at = [&](double part) {
        return microseconds[static_cast<std::size_t>(part * static_cast<double>(microseconds.size() - 1))];
    };
    std::printf(
        "%-28s %3d readers  %5d writes  median %8.1f us  p99 %8.1f us\n", what, readers, writes, at(0.5), at(0.99));
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int readers = argumentCount > 1 ? std::atoi(arguments[1]) : 5;
    const int writes = argumentCount > 2 ? std::atoi(arguments[2]) : 1000;
    const int identifiers = argumentCount > 3 ? std::atoi(arguments[3]) : 3;
    const char* const chosen = std::getenv("TMPDIR");
    std::string root = std::string(chosen ? chosen : "/tmp") + "/appledger-bench.XXXXXX";
    if (!::mkdtemp(root.data()) || !setDeviceRoot(root))
        return 1;
    const auto defaults = preferences();
    for (int key = 0; key < 30; ++key) {
        std::vector<id> items;
        for (int index = 0; index < identifiers; ++index)
            items.push_back(string("com.example.application" + std::to_string(key * 1000 + index)));
        defaults->setObject(array(std::move(items)), "Filler" + std::to_string(key));
    }
    if (!defaults->synchronize())
        return 1;

    std::string error;
    const pid_t daemon = startBusDaemon(root, error);
    if (daemon < 0) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    const std::string address = busAddress(busSocketPath(root));
    int ends[2];
    if (::pipe(ends) != 0)
        return 1;
    reports = ends[1];

    std::vector<pid_t> children;
    for (int index = 0; index < readers; ++index)
        children.push_back(startNotifiedReader(root, address, index));
    lastOf(ends[0], readers);
    if (!connectBus(address, "Writer", [] {}))
        return 1;
    measure("notified", ends[0], readers, writes, true);
    disconnectBus();
    for (const pid_t child : children)
        ::kill(child, SIGKILL);
    for (const pid_t child : children)
        ::waitpid(child, nullptr, 0);

    const pid_t poller = startPollingReader(root);
    lastOf(ends[0], 1);
    measure("polling one file, peer", ends[0], 1, writes, false);
    ::kill(poller, SIGKILL);
    ::waitpid(poller, nullptr, 0);
    ::kill(daemon, SIGTERM);
    ::waitpid(daemon, nullptr, 0);
    std::filesystem::remove_all(root);
}
