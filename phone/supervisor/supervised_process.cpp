#include "phone/supervisor/supervised_process.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <sys/wait.h>

namespace phone {

using namespace std::chrono_literals;

namespace {

constexpr std::string_view loading = "loading ";
constexpr std::string_view readyWord = "ready";

/// Who ends a process from outside takes one of these; any other comes of what the process does.
bool isCrash(int signal)
{
    constexpr int fromOutside[] { SIGKILL, SIGTERM, SIGINT, SIGHUP, SIGQUIT };
    return std::ranges::find(fromOutside, signal) == std::end(fromOutside);
}

} // namespace

std::chrono::milliseconds pauseAfter(int failures) noexcept
{
    if (failures <= 0)
        return 0ms;
    return std::min<std::chrono::milliseconds>(5s, 10ms * (1 << std::min(failures, 10)));
}

bool SupervisedProcess::hear(std::string_view bytes)
{
    report.append(bytes);
    bool saidReady = false;
    for (std::size_t end = report.find('\n'); end != std::string::npos; end = report.find('\n')) {
        const std::string line = report.substr(0, end);
        report.erase(0, end + 1);
        saidReady |= line == readyWord;
        if (line.starts_with(loading)) {
            lastLoaded = line.substr(loading.size());
            libraries.push_back(lastLoaded);
        }
    }
    return saidReady;
}

std::string SupervisedProcess::noteEnd(int status, Clock::time_point now)
{
    if (std::exchange(endIsAskedFor, false))
        return {};
    // Once it is to come up without libraries, only its owner changes that.
    if (!comesUpWithoutLibraries() && now - started >= longestCrashingRun)
        crashes = 0;
    const std::string who = name + " (process " + std::to_string(child.pid) + ")";
    if (!WIFSIGNALED(status))
        return who + " ended with status " + std::to_string(WEXITSTATUS(status));
    const int signal = WTERMSIG(status);
    const char* const description = ::sigdescr_np(signal);
    std::string sentence = who + " died of signal " + std::to_string(signal) + " ("
        + (description ? description : "without a name") + ") with ";
    for (const std::string& library : libraries)
        sentence += (&library == &libraries.front() ? "" : ", ") + library;
    if (libraries.empty())
        sentence += "no third-party library";
    if (isCrash(signal)) {
        ++crashes;
        lastSignal = signal;
        if (crashes == mostCrashes)
            sentence += "; it comes up without third-party libraries now";
    }
    return sentence;
}

void SupervisedProcess::forgetCrashes() noexcept
{
    crashes = 0;
    lastSignal = 0;
}

} // namespace phone
