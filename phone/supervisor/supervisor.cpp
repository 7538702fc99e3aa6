#include "phone/supervisor/supervisor.h"

#include "phone/process/process_definition.h"
#include "platform/dispatch/queue.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;
using platform::detail::Descriptor;

namespace {

/// Who runs for less hasn't started well.
constexpr auto shortestRun = 1s;

/// So many starts in a row may fail before the phone counts as broken, while it comes up.
constexpr int patience = 5;

std::string hostProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "phone-process";
}

/// Into the phone's log, which standard error is.
void log(const std::string& line)
{
    std::fprintf(stderr, "supervisor: %s\n", line.c_str());
}

std::string because(const std::string& what)
{
    return what + ": " + std::strerror(errno);
}

/// Waits for a child's end until then; false when it hasn't ended.
bool waitUntil(SupervisedProcess::Clock::time_point deadline, pid_t child)
{
    constexpr int pauseInMilliseconds = 2;
    while (::waitpid(child, nullptr, WNOHANG) == 0) {
        if (SupervisedProcess::Clock::now() > deadline)
            return false;
        ::poll(nullptr, 0, pauseInMilliseconds);
    }
    return true;
}

void signalOrLog(pid_t process, int signal)
{
    if (::kill(process, signal) != 0 && errno != ESRCH)
        log(because("can't signal process " + std::to_string(process)));
}

} // namespace

Supervisor::Supervisor(SupervisorOptions options)
    : options_(std::move(options))
    , directory_(options_.root)
{
    for (const ProcessDefinition& definition : processDefinitions())
        processes_.push_back({ .name = std::string(definition.name) });
}

int Supervisor::run()
{
    // The processes must not hold the starter's pipe open.
    if (options_.readyDescriptor >= 0 && ::fcntl(options_.readyDescriptor, F_SETFD, FD_CLOEXEC) != 0)
        log(because("the starter's descriptor can't be used"));
    if (!takeLock() || !handleSignalsInLoop())
        return 1;
    watchDirectory();
    setBusHandler([this](std::string_view request, BusReply reply) { answer(request, std::move(reply)); });
    std::string error;
    if (!startBus(error)) {
        tellStarter(error);
        return 1;
    }
    armDeadline();
    for (Process& process : processes_)
        startProcess(process);
    runRunLoop();
    comeDown();
    return exitStatus_;
}

bool Supervisor::takeLock()
{
    if (const std::string problem = directory_.makeRunDirectory(); !problem.empty()) {
        tellStarter(problem);
        return false;
    }
    lock_ = Descriptor(directory_.openLockFile(O_RDWR | O_CREAT));
    if (!lock_) {
        tellStarter(because("can't open " + directory_.lockFile()));
        return false;
    }
    // Not a lock that children inherit: it goes with this process and no other.
    struct flock whole { };
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    if (::fcntl(lock_.get(), F_SETLK, &whole) != 0) {
        tellStarter(errno == EACCES || errno == EAGAIN ? "the phone at " + options_.root + " is up already"
                                                       : because("can't lock " + directory_.lockFile()));
        return false;
    }
    return true;
}

bool Supervisor::handleSignalsInLoop()
{
    sigset_t handled;
    sigemptyset(&handled);
    for (const int signal : { SIGTERM, SIGINT, SIGCHLD })
        sigaddset(&handled, signal);
    if (::sigprocmask(SIG_BLOCK, &handled, nullptr) == 0 && ::signal(SIGPIPE, SIG_IGN) != SIG_ERR)
        signals_ = Descriptor(::signalfd(-1, &handled, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!signals_) {
        tellStarter(because("can't listen for signals"));
        return false;
    }
    addRunLoopSource(signals_.get(), [this] { handleSignals(); });
    return true;
}

void Supervisor::watchDirectory()
{
    directoryWatch_ = Descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    constexpr std::uint32_t changes
        = IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    if (!directoryWatch_ || ::inotify_add_watch(directoryWatch_.get(), directory_.runDirectory().c_str(), changes) < 0
        || ::inotify_add_watch(directoryWatch_.get(), options_.root.c_str(), changes) < 0) {
        log(because("the phone's folder can't be watched"));
        directoryWatch_ = Descriptor();
        return;
    }
    addRunLoopSource(directoryWatch_.get(), [this] { lookAtDirectory(); });
}

/// Whether the phone's folder is still the one that this supervisor has locked, and no other phone's.
bool Supervisor::holdsDirectory() const
{
    struct stat held { };
    struct stat present { };
    return ::fstat(lock_.get(), &held) == 0 && ::stat(directory_.lockFile().c_str(), &present) == 0
        && held.st_ino == present.st_ino && held.st_dev == present.st_dev;
}

void Supervisor::lookAtDirectory()
{
    char events[4096];
    while (::read(directoryWatch_.get(), events, sizeof events) > 0) { }
    if (holdsDirectory())
        return armDeadline();
    log("the folder of the phone is gone, and so the phone ends");
    stopRunLoop();
}

bool Supervisor::startBus(std::string& error)
{
    busDaemon_ = startBusDaemon(directory_.runDirectory(), error);
    if (busDaemon_ < 0)
        return false;
    // A bus that this process has lost is as good as none: its end starts another.
    const auto endDaemon = [this] {
        if (busDaemon_ > 0)
            signalOrLog(busDaemon_, SIGKILL);
    };
    if (connectBus(directory_.busAddress(), supervisorPeer, endDaemon))
        return true;
    error = "can't reach the phone's bus";
    endBus(SIGTERM);
    return false;
}

void Supervisor::keepBusUp()
{
    disconnectBus();
    std::string error;
    if (startBus(error)) {
        if (std::exchange(failedBusStarts_, 0) > 0)
            log("the bus is up again");
        return;
    }
    if (failedBusStarts_++ == 0)
        log(error + "; trying again until it does");
    dispatch_after(pauseAfter(failedBusStarts_), dispatch_get_main_queue(), [this] {
        if (!comingDown_)
            keepBusUp();
    });
}

void Supervisor::startProcess(Process& process)
{
    std::vector<std::string> arguments { hostProgram(), "--root", options_.root, "--process", process.name, "--bus",
        directory_.busAddress(), "--ios", options_.version.text() };
    if (options_.stock || process.comesUpWithoutLibraries())
        arguments.emplace_back("--stock");
    process.ready = false;
    process.report.clear();
    process.libraries.clear();
    process.started = Clock::now();
    process.child = startChild(std::move(arguments));
    if (process.child.pid < 0) {
        ++process.failedStarts;
        if (!std::exchange(process.shortageIsSaid, true))
            log(because("can't start " + process.name) + "; trying again until it does");
        startLater(process);
        return;
    }
    ++process.starts;
    process.reportSource = addRunLoopSource(process.child.reportDescriptor, [this, &process] { hearReport(process); });
}

void Supervisor::startLater(Process& process)
{
    dispatch_after(pauseAfter(process.failedStarts), dispatch_get_main_queue(), [this, &process] {
        if (!comingDown_ && process.child.pid < 0)
            startProcess(process);
    });
}

/// False when there was nothing to hear.
bool Supervisor::hearReport(Process& process)
{
    char bytes[512];
    const ssize_t count = ::read(process.child.reportDescriptor, bytes, sizeof bytes);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return false;
    if (count <= 0)
        stopHearing(process);
    else if (process.hear({ bytes, static_cast<std::size_t>(count) }))
        processIsReady(process);
    return true;
}

void Supervisor::stopHearing(Process& process)
{
    if (process.reportSource == 0)
        return;
    removeRunLoopSource(std::exchange(process.reportSource, 0));
    ::close(std::exchange(process.child.reportDescriptor, -1));
}

void Supervisor::processIsReady(Process& process)
{
    process.ready = true;
    if (std::exchange(process.shortageIsSaid, false) || process.failedStarts > 1)
        log(process.name + " has started again");
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - process.killed);
    for (const BusReply& reply : std::exchange(process.waiting, {}))
        answerRestart(process, took, reply);
    if (std::ranges::all_of(processes_, &Process::ready)) {
        hasBeenUp_ = true;
        tellStarter("up");
    }
}

void Supervisor::collectEndedChildren()
{
    int status = 0;
    for (pid_t pid = ::waitpid(-1, &status, WNOHANG); pid > 0; pid = ::waitpid(-1, &status, WNOHANG)) {
        if (comingDown_)
            continue;
        if (pid == busDaemon_) {
            log("the bus has ended; it is started again");
            busDaemon_ = -1;
            keepBusUp();
        }
        for (Process& process : processes_)
            if (process.child.pid == pid)
                processHasEnded(process, status);
    }
}

void Supervisor::processHasEnded(Process& process, int status)
{
    // What it has still said, the library that it died in above all.
    while (process.reportSource != 0 && hearReport(process)) { }
    stopHearing(process);
    const Clock::time_point now = Clock::now();
    const int crashesBefore = process.crashes;
    const bool isAskedFor = process.endIsAskedFor;
    const std::string end = process.noteEnd(status, now);
    // One that ends as soon as it is ready is no better than one that doesn't start.
    const bool hasRun = std::exchange(process.ready, false) && (isAskedFor || now - process.started >= shortestRun);
    process.child = {};
    process.failedStarts = hasRun ? 0 : process.failedStarts + 1;
    if (!end.empty() && (hasRun || process.failedStarts == 1 || process.crashes != crashesBefore))
        log(end);
    if (!hasBeenUp_ && options_.readyDescriptor >= 0 && process.failedStarts >= patience) {
        giveUp(process.name + " doesn't start; " + directory_.logFile() + " may tell why");
        return;
    }
    if (hasRun)
        startProcess(process);
    else
        startLater(process);
}

void Supervisor::handleSignals()
{
    signalfd_siginfo information {};
    while (::read(signals_.get(), &information, sizeof information) == sizeof information)
        if (information.ssi_signo != SIGCHLD)
            stopRunLoop();
    collectEndedChildren();
}

void Supervisor::comeDown()
{
    comingDown_ = true;
    const std::vector<std::string> killed = endProcesses();
    for (const std::string& name : killed)
        log(name + " didn't end when it was told to, and was killed");
    answerDown(killed);
    disconnectBus();
    // A daemon tidies its path up when it ends, which may be another phone's by now.
    const bool isOurs = holdsDirectory();
    endBus(isOurs ? SIGTERM : SIGKILL);
    if (isOurs)
        directory_.removeSocket();
}

std::vector<std::string> Supervisor::endProcesses()
{
    for (const Process& process : processes_)
        if (process.child.pid > 0)
            signalOrLog(process.child.pid, SIGTERM);
    const auto deadline = Clock::now() + timeToEnd;
    std::vector<std::string> killed;
    for (const Process& process : processes_) {
        if (process.child.pid <= 0 || waitUntil(deadline, process.child.pid))
            continue;
        signalOrLog(process.child.pid, SIGKILL);
        killed.push_back(process.name);
        if (!waitUntil(Clock::now() + timeToEnd, process.child.pid))
            log(process.name + " can't be killed");
    }
    return killed;
}

void Supervisor::endBus(int signal)
{
    const pid_t daemon = std::exchange(busDaemon_, -1);
    if (daemon < 0)
        return;
    signalOrLog(daemon, signal);
    if (waitUntil(Clock::now() + timeToEnd, daemon))
        return;
    log("the bus didn't end when it was told to, and was killed");
    signalOrLog(daemon, SIGKILL);
    if (!waitUntil(Clock::now() + timeToEnd, daemon))
        log("the bus can't be killed");
}

void Supervisor::giveUp(const std::string& reason)
{
    tellStarter(reason);
    exitStatus_ = 1;
    stopRunLoop();
}

void Supervisor::tellStarter(std::string_view text)
{
    if (std::exchange(hasTold_, true))
        return;
    if (options_.readyDescriptor < 0) {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
        return;
    }
    if (::write(options_.readyDescriptor, text.data(), text.size()) < 0)
        log("who started the phone is gone");
    ::close(options_.readyDescriptor);
}

Supervisor::Process* Supervisor::find(std::string_view name)
{
    const auto found = std::ranges::find(processes_, name, &Process::name);
    return found == processes_.end() ? nullptr : &*found;
}

} // namespace phone
