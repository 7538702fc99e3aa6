#include "platform/darwin/bus.h"
#include "platform/darwin/bus_daemon.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/run_loop.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// The time from a post to the callback in another process, over the bus: one post at a time, each heard
/// by all receivers before the next; and the time until a burst of posts has been heard by all.
/// Usage: notification_bench [receivers [posts]]

using namespace platform;
using std::chrono::steady_clock;

namespace {

constexpr const char* name = "com.appledger.forcerefresh";
constexpr auto patience = std::chrono::minutes(2);

struct Shared {
    std::atomic<long> posted { 0 }; ///< nanoseconds on the machine's clock
    std::atomic<int> ready { 0 };
    std::atomic<long> heard { 0 };
};

Shared* shared = nullptr;
long* latencies = nullptr; ///< of this receiver
long heardHere = 0;
long measuredPosts = 0;

long now()
{
    return std::chrono::nanoseconds(steady_clock::now().time_since_epoch()).count();
}

template <class T> T* mapShared(std::size_t count)
{
    void* const memory = mmap(nullptr, count * sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        std::abort();
    return static_cast<T*>(memory);
}

[[noreturn]] void receive(const std::string& address)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    CFNotificationCenterAddObserver(
        [] {
            if (heardHere < measuredPosts)
                latencies[heardHere] = now() - shared->posted.load();
            ++heardHere;
            ++shared->heard;
        },
        name, CFNotificationSuspensionBehavior::DeliverImmediately);
    if (!connectBus(address, {}, [] { _exit(0); }))
        _exit(1);
    ++shared->ready;
    runRunLoop();
    _exit(0);
}

/// Waits without turning the processor over to a busy loop, which the receivers need.
bool waitUntilHeard(long count)
{
    return runUntil([count] { return shared->heard.load() >= count; }, patience);
}

double microseconds(long nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1000;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int receivers = argumentCount > 1 ? std::atoi(arguments[1]) : 1;
    measuredPosts = argumentCount > 2 ? std::atol(arguments[2]) : 3000;
    constexpr long burst = 1000;

    std::string directory = std::filesystem::temp_directory_path() / "appledger-bench-XXXXXX";
    std::string error;
    if (!mkdtemp(directory.data()))
        return 1;
    const pid_t daemon = startBusDaemon(directory, error);
    if (daemon < 0) {
        std::cerr << error << '\n';
        return 1;
    }
    const std::string address = busAddress(busSocketPath(directory));
    shared = new (mapShared<Shared>(1)) Shared;
    long* const all = mapShared<long>(static_cast<std::size_t>(receivers * measuredPosts));
    for (int receiver = 0; receiver < receivers; ++receiver) {
        latencies = all + receiver * measuredPosts;
        if (fork() == 0)
            receive(address);
    }
    if (!connectBus(address, {}, [] {}) || !runUntil([&] { return shared->ready.load() == receivers; }, patience))
        return 1;

    for (long post = 1; post <= measuredPosts; ++post) {
        shared->posted = now();
        CFNotificationCenterPostNotification(name);
        if (!waitUntilHeard(post * receivers))
            return 1;
    }
    std::vector<long> sorted(all, all + receivers * measuredPosts);
    std::ranges::sort(sorted);

    const long burstStart = now();
    for (long post = 0; post < burst; ++post)
        CFNotificationCenterPostNotification(name);
    if (!waitUntilHeard((measuredPosts + burst) * receivers))
        return 1;
    const long burstTime = now() - burstStart;

    std::cout << receivers << " receivers, " << measuredPosts << " posts: median "
              << microseconds(sorted[sorted.size() / 2]) << " us, 99 of 100 below "
              << microseconds(sorted[sorted.size() * 99 / 100]) << " us; a burst of " << burst << " heard by all in "
              << microseconds(burstTime) / 1000 << " ms\n";
    kill(daemon, SIGTERM);
    while (wait(nullptr) > 0) { }
    std::filesystem::remove_all(directory);
    return 0;
}
