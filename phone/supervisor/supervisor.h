#pragma once

#include "phone/supervisor/phone_directory.h"
#include "phone/supervisor/supervised_process.h"
#include "platform/darwin/bus.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/descriptor.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

struct SupervisorOptions {
    std::string root;
    platform::SystemVersion version;
    bool stock = false;
    std::string command {}; ///< the program that changes policies; "" when nobody takes anything back by itself
    int readyDescriptor = -1; ///< gets "up", or what went wrong, and is closed then; -1: nobody waits
};

/// Starts the bus and the processes of a phone, has each back when it ends, and answers the command:
/// "status", "kill" (a process, with SIGKILL), "respring", "down" and nothing else. One a phone: it holds the
/// phone's lock.
///
/// What can't be started now is tried again after ever longer pauses, with one line in the log. A process that crashes
/// three times in a row comes up without third-party libraries, until the owner restarts it. A phone whose folder is
/// taken away ends. When the deadline comes that the folder tells (policy_deadline.h), the command is started to take
/// back what was to end.
class Supervisor {
public:
    explicit Supervisor(SupervisorOptions options);

    /// Until "down", SIGTERM or SIGINT, or until the phone can't come up. Returns the exit status.
    int run();

private:
    using Process = SupervisedProcess;
    using Clock = Process::Clock;

    bool takeLock();
    bool handleSignalsInLoop();
    void watchDirectory();
    bool holdsDirectory() const;
    void lookAtDirectory();
    void armDeadline();
    void settlePolicies() const;

    bool startBus(std::string& error);
    void keepBusUp();

    void startProcess(Process& process);
    void startLater(Process& process);
    bool hearReport(Process& process);
    void stopHearing(Process& process);
    void processIsReady(Process& process);
    void processHasEnded(Process& process, int status);
    void collectEndedChildren();
    void handleSignals();

    void comeDown();
    std::vector<std::string> endProcesses();
    void endBus(int signal);
    void giveUp(const std::string& reason);
    void tellStarter(std::string_view text);

    void answer(std::string_view request, platform::BusReply reply);
    void answerStatus(platform::BusReply reply);
    void answerDown(const std::vector<std::string>& killed);
    static void answerRestart(const Process& process, std::chrono::milliseconds took, const platform::BusReply& reply);
    void restart(const std::string& name, int signal, platform::BusReply reply);
    Process* find(std::string_view name);

    const SupervisorOptions options_;
    const PhoneDirectory directory_;
    platform::detail::Descriptor lock_;
    platform::detail::Descriptor signals_;
    platform::detail::Descriptor directoryWatch_;
    pid_t busDaemon_ = -1;
    int failedBusStarts_ = 0;
    std::vector<Process> processes_;
    std::optional<double> deadline_; ///< that is waited for, in seconds since 1970
    bool comingDown_ = false;
    bool hasBeenUp_ = false; ///< from then on nothing gives the phone up
    bool hasTold_ = false; ///< the starter
    std::vector<platform::BusReply> downReplies_;
    int exitStatus_ = 0;
};

} // namespace phone
