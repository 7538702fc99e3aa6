#pragma once

#include "phone/supervisor/child_process.h"
#include "platform/darwin/bus.h"
#include "platform/dispatch/run_loop.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

/// The pause before the next try of what failed so many times in a row: none at first, then ever longer, to 5 seconds.
std::chrono::milliseconds pauseAfter(int failures) noexcept;

/// What is told to end has so long before it is killed.
constexpr std::chrono::seconds timeToEnd { 2 };

/// What the supervisor knows of one process of the phone, which ends and is started many times.
struct SupervisedProcess {
    using Clock = std::chrono::steady_clock;

    /// So many crashes in a row, none after a minute's run, and it comes up without third-party libraries.
    static constexpr int mostCrashes = 3;
    static constexpr std::chrono::seconds longestCrashingRun { 60 };

    /// Takes in what the process reported, however it is cut. True when it has said that it is ready.
    bool hear(std::string_view bytes);

    /// To be called with what waitpid() said; a sentence for the log, "" for an end that was asked for.
    std::string noteEnd(int status, Clock::time_point now);

    /// The owner has it restarted: with its libraries again.
    void forgetCrashes() noexcept;

    bool comesUpWithoutLibraries() const noexcept { return crashes >= mostCrashes; }

    std::string name;
    ChildProcess child {};
    platform::RunLoopSource reportSource = 0;
    std::string report {}; ///< the line that isn't complete yet
    std::vector<std::string> libraries {}; ///< that it loaded in this run, or was loading, by device path
    std::string lastLoaded {}; ///< of all runs
    bool ready = false;
    bool endIsAskedFor = false;
    int starts = 0;
    int failedStarts = 0; ///< in a row, without a run worth the name
    bool shortageIsSaid = false; ///< in the log; until it has started again
    int crashes = 0;
    int lastSignal = 0; ///< of the last crash
    Clock::time_point started {};
    Clock::time_point killed {};
    std::vector<platform::BusReply> waiting {}; ///< for its return
};

} // namespace phone
