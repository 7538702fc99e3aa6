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
#include <sys/file.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// So many starts in a row may fail before the phone counts as broken, while it comes up.
constexpr int patience = 5;

std::string hostProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "phone-process";
}

} // namespace

Supervisor::Supervisor(SupervisorOptions options)
    : options_(std::move(options))
    , directory_(options_.root)
{
    for (const ProcessDefinition& definition : processDefinitions())
        processes_.push_back({ .name = std::string(definition.name) });
}

Supervisor::~Supervisor()
{
    for (const int descriptor : { lock_, signals_ })
        if (descriptor >= 0)
            ::close(descriptor);
}

int Supervisor::run()
{
    // The processes must not hold the starter's pipe open.
    if (options_.readyDescriptor >= 0)
        ::fcntl(options_.readyDescriptor, F_SETFD, FD_CLOEXEC);
    if (!takeLock())
        return 1;
    sigset_t handled;
    sigemptyset(&handled);
    for (const int signal : { SIGTERM, SIGINT, SIGCHLD })
        sigaddset(&handled, signal);
    ::sigprocmask(SIG_BLOCK, &handled, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
    signals_ = ::signalfd(-1, &handled, SFD_CLOEXEC | SFD_NONBLOCK);
    addRunLoopSource(signals_, [this] { handleSignals(); });

    setBusHandler([this](std::string_view request, BusReply reply) { answer(request, std::move(reply)); });
    if (!startBus())
        return 1;
    for (Process& process : processes_)
        startProcess(process);
    runRunLoop();
    comeDown();
    return exitStatus_;
}

bool Supervisor::takeLock()
{
    std::error_code ignored;
    std::filesystem::create_directories(directory_.runDirectory(), ignored);
    lock_ = ::open(directory_.lockFile().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (lock_ < 0) {
        tellStarter("can't write " + directory_.lockFile() + ": " + std::strerror(errno));
        return false;
    }
    if (::flock(lock_, LOCK_EX | LOCK_NB) != 0) {
        tellStarter("the phone at " + options_.root + " is up already");
        return false;
    }
    const std::string process = std::to_string(::getpid());
    if (::ftruncate(lock_, 0) != 0 || ::write(lock_, process.data(), process.size()) < 0) {
        tellStarter("can't write " + directory_.lockFile() + ": " + std::strerror(errno));
        return false;
    }
    return true;
}

bool Supervisor::startBus()
{
    std::string error;
    busDaemon_ = startBusDaemon(directory_.runDirectory(), error);
    if (busDaemon_ < 0) {
        tellStarter(error);
        return false;
    }
    if (!connectBus(directory_.busAddress(), supervisorPeer, [] {})) {
        tellStarter("can't reach the phone's bus");
        return false;
    }
    return true;
}

void Supervisor::restartBus()
{
    disconnectBus();
    if (!startBus()) {
        exitStatus_ = 1;
        stopRunLoop();
    }
}

void Supervisor::startProcess(Process& process)
{
    std::vector<std::string> arguments { hostProgram(), "--root", options_.root, "--process", process.name, "--bus",
        directory_.busAddress(), "--ios", options_.version.text() };
    if (options_.stock)
        arguments.emplace_back("--stock");
    process.ready = false;
    process.child = startChild(std::move(arguments));
    ++process.starts;
    if (process.child.pid < 0) {
        giveUp("can't start " + process.name + ": " + std::strerror(errno));
        return;
    }
    process.readySource = addRunLoopSource(process.child.readyDescriptor, [this, &process] {
        char byte = 0;
        const bool ready = ::read(process.child.readyDescriptor, &byte, 1) == 1;
        removeRunLoopSource(process.readySource);
        ::close(process.child.readyDescriptor);
        process.readySource = 0;
        if (ready)
            processIsReady(process);
    });
}

void Supervisor::processIsReady(Process& process)
{
    process.ready = true;
    process.failedStarts = 0;
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - process.killed);
    for (const BusReply& reply : std::exchange(process.waiting, {}))
        reply("{\"ok\":true,\"pid\":" + std::to_string(process.child.pid)
            + ",\"milliseconds\":" + std::to_string(took.count()) + "}");
    if (std::ranges::all_of(processes_, &Process::ready))
        tellStarter("up");
}

void Supervisor::collectEndedChildren()
{
    int status = 0;
    for (pid_t pid = ::waitpid(-1, &status, WNOHANG); pid > 0; pid = ::waitpid(-1, &status, WNOHANG)) {
        if (comingDown_)
            continue;
        if (pid == busDaemon_)
            restartBus();
        for (Process& process : processes_)
            if (process.child.pid == pid)
                processHasEnded(process);
    }
}

void Supervisor::processHasEnded(Process& process)
{
    if (process.readySource != 0) {
        removeRunLoopSource(process.readySource);
        ::close(process.child.readyDescriptor);
        process.readySource = 0;
    }
    process.child = {};
    if (!process.ready && ++process.failedStarts >= patience && options_.readyDescriptor >= 0
        && process.starts == patience) {
        giveUp(process.name + " doesn't start; " + directory_.logFile() + " may tell why");
        return;
    }
    const bool wasReady = std::exchange(process.ready, false);
    if (wasReady || process.failedStarts == 0) {
        startProcess(process);
        return;
    }
    // One that dies in its start is tried again ever more slowly, up to half a second.
    const auto delay = std::min(500ms, 10ms * (1 << std::min(process.failedStarts, 6)));
    dispatch_after(delay, dispatch_get_main_queue(), [this, &process] {
        if (!comingDown_ && process.child.pid < 0)
            startProcess(process);
    });
}

void Supervisor::handleSignals()
{
    signalfd_siginfo information {};
    while (::read(signals_, &information, sizeof information) == sizeof information)
        if (information.ssi_signo != SIGCHLD)
            stopRunLoop();
    collectEndedChildren();
}

void Supervisor::comeDown()
{
    comingDown_ = true;
    disconnectBus();
    for (const Process& process : processes_)
        if (process.child.pid > 0)
            ::kill(process.child.pid, SIGTERM);
    const auto deadline = Clock::now() + 2s;
    bool all = false;
    for (Process& process : processes_) {
        while (process.child.pid > 0) {
            if (::waitpid(process.child.pid, nullptr, WNOHANG) != 0)
                process.child.pid = -1;
            else if (Clock::now() > deadline && !std::exchange(all, true))
                for (const Process& late : processes_)
                    if (late.child.pid > 0)
                        ::kill(late.child.pid, SIGKILL);
            ::usleep(1000);
        }
    }
    if (busDaemon_ > 0) {
        ::kill(busDaemon_, SIGTERM);
        ::waitpid(busDaemon_, nullptr, 0);
    }
    std::error_code ignored;
    std::filesystem::remove(busSocketPath(directory_.runDirectory()), ignored);
}

void Supervisor::giveUp(const std::string& reason)
{
    tellStarter(reason);
    exitStatus_ = 1;
    stopRunLoop();
}

void Supervisor::tellStarter(std::string_view text)
{
    static bool told = false;
    if (std::exchange(told, true))
        return;
    if (options_.readyDescriptor < 0) {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
        return;
    }
    if (::write(options_.readyDescriptor, text.data(), text.size()) < 0)
        std::fprintf(stderr, "who started the phone is gone\n");
    ::close(options_.readyDescriptor);
}

Supervisor::Process* Supervisor::find(std::string_view name)
{
    const auto found = std::ranges::find(processes_, name, &Process::name);
    return found == processes_.end() ? nullptr : &*found;
}

} // namespace phone
