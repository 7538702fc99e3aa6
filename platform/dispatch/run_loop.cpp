#include "platform/dispatch/run_loop.h"

#include "platform/dispatch/main_queue.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <map>
#include <memory>
#include <optional>
#include <poll.h>
#include <utility>
#include <vector>

namespace platform {

namespace {

using detail::MainQueue;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

struct Source {
    int descriptor;
    std::function<void()> readable;
    bool running = false;
};

struct Sources {
    std::map<RunLoopSource, std::shared_ptr<Source>> present;
    RunLoopSource last = 0;
    std::uint64_t passes = 0;
};

Sources& sources()
{
    static auto* const shared = new Sources;
    return *shared;
}

/// ppoll(), also where the process may open fewer descriptors than it has: the call refuses so many at once, and then
/// they are looked at singly, every few milliseconds.
int pollAll(std::vector<pollfd>& polled, const timespec* limit)
{
    constexpr timespec shortPause { 0, 5'000'000 };
    constexpr timespec none {};
    const int readyCount = ::ppoll(polled.data(), polled.size(), limit, nullptr);
    if (readyCount >= 0 || errno != EINVAL)
        return readyCount;
    int found = 0;
    for (pollfd& one : polled)
        found += ::ppoll(&one, 1, &none, nullptr) > 0 ? 1 : 0;
    if (found == 0) {
        const bool isShorter = limit && limit->tv_sec == 0 && limit->tv_nsec < shortPause.tv_nsec;
        ::nanosleep(isShorter ? limit : &shortPause, nullptr);
    }
    return found;
}

/// Waits for the sources and for the main queue, at most for `limit`, and calls the sources that are
/// ready. True when it called any.
bool serveSources(std::optional<nanoseconds> limit)
{
    std::vector<pollfd> polled { { MainQueue::shared().wakeDescriptor(), POLLIN, 0 } };
    std::vector<RunLoopSource> identifiers { 0 };
    for (const auto& [identifier, source] : sources().present) {
        // A source whose reader runs the loop is not entered again.
        if (source->running)
            continue;
        polled.push_back({ source->descriptor, POLLIN, 0 });
        identifiers.push_back(identifier);
    }

    std::optional<nanoseconds> wait = MainQueue::shared().beginSleep();
    if (limit)
        wait = std::min(wait.value_or(*limit), *limit);
    timespec time {};
    if (wait) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*wait);
        time.tv_sec = seconds.count();
        time.tv_nsec = (*wait - seconds).count();
    }
    const std::uint64_t pass = ++sources().passes;
    const int readyCount = pollAll(polled, wait ? &time : nullptr);
    MainQueue::shared().endSleep();
    if (readyCount <= 0)
        return false;

    bool calledAny = false;
    for (std::size_t index = 1; index < polled.size(); ++index) {
        if (polled[index].revents == 0)
            continue;
        const auto found = sources().present.find(identifiers[index]);
        if (found == sources().present.end())
            continue;
        const std::shared_ptr<Source> source = found->second;
        source->running = true;
        detail::run(source->readable);
        source->running = false;
        calledAny = true;
        // The call ran the loop, which may have served the others: what was polled here is out of date.
        if (sources().passes != pass)
            break;
    }
    return calledAny;
}

} // namespace

void runRunLoop()
{
    MainQueue& queue = MainQueue::shared();
    while (!queue.takeStop()) {
        const bool ran = queue.runBatch(MainQueue::Stop::AfterStopRunLoop);
        serveSources(ran ? std::optional(nanoseconds::zero()) : std::nullopt);
    }
}

void stopRunLoop()
{
    MainQueue::shared().requestStop();
}

bool runUntilIdle(milliseconds limit)
{
    const steady_clock::time_point end = steady_clock::now() + limit;
    bool ranAny = false;
    for (bool ran = true; ran && steady_clock::now() < end; ranAny |= ran) {
        ran = MainQueue::shared().runBatch(MainQueue::Stop::WhenBatchIsDone);
        ran |= serveSources(nanoseconds::zero());
    }
    return ranAny;
}

bool runUntil(const std::function<bool()>& condition, milliseconds limit)
{
    // What another thread or process makes true doesn't wake the loop.
    constexpr milliseconds longestWait(5);
    const steady_clock::time_point start = steady_clock::now();
    while (!condition()) {
        const milliseconds remaining = limit - duration_cast<milliseconds>(steady_clock::now() - start);
        if (remaining <= milliseconds::zero())
            return false;
        const bool ran = MainQueue::shared().runBatch(MainQueue::Stop::WhenBatchIsDone);
        serveSources(ran ? nanoseconds::zero() : nanoseconds(std::min(remaining, longestWait)));
    }
    return true;
}

RunLoopSource addRunLoopSource(int descriptor, std::function<void()> readable)
{
    const RunLoopSource identifier = ++sources().last;
    sources().present.emplace(identifier, std::make_shared<Source>(descriptor, std::move(readable)));
    return identifier;
}

void removeRunLoopSource(RunLoopSource source)
{
    sources().present.erase(source);
}

} // namespace platform
