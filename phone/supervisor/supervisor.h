#pragma once

#include "phone/supervisor/child_process.h"
#include "phone/supervisor/phone_directory.h"
#include "platform/darwin/bus.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/run_loop.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

struct SupervisorOptions {
    std::string root;
    platform::SystemVersion version;
    bool stock = false;
    int readyDescriptor = -1; ///< gets "up", or what went wrong, and is closed then; -1: nobody waits
};

/// Starts the bus and the processes of a phone, has each back when it ends, and answers the command:
/// "status", "kill" (a process, with SIGKILL), "respring" and nothing else. One a phone: it holds the
/// phone's lock.
class Supervisor {
public:
    explicit Supervisor(SupervisorOptions options);
    ~Supervisor();

    /// Until SIGTERM or SIGINT, or until the phone can't come up. Returns the exit status.
    int run();

private:
    using Clock = std::chrono::steady_clock;

    struct Process {
        std::string name;
        ChildProcess child {};
        platform::RunLoopSource readySource = 0;
        bool ready = false;
        int starts = 0;
        int failedStarts = 0; ///< in a row, without having been ready
        std::vector<platform::BusReply> waiting {}; ///< for its return
        Clock::time_point killed {};
    };

    bool takeLock();
    bool startBus();
    void restartBus();
    void startProcess(Process& process);
    void processIsReady(Process& process);
    void collectEndedChildren();
    void processHasEnded(Process& process);
    void handleSignals();
    void comeDown();
    void giveUp(const std::string& reason);
    void tellStarter(std::string_view text);

    void answer(std::string_view request, platform::BusReply reply);
    void answerStatus(platform::BusReply reply);
    void restart(const std::string& name, int signal, platform::BusReply reply);
    Process* find(std::string_view name);

    const SupervisorOptions options_;
    const PhoneDirectory directory_;
    int lock_ = -1;
    int signals_ = -1;
    pid_t busDaemon_ = -1;
    std::vector<Process> processes_;
    bool comingDown_ = false;
    int exitStatus_ = 0;
};

} // namespace phone
