#include "phone/supervisor/child_process.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace phone {

namespace {

constexpr int exitWhenNotExecuted = 127;

/// A shortage of the supervisor's passes; what it starts meanwhile would keep it.
bool allowAllDescriptors() noexcept
{
    rlimit descriptors {};
    if (::getrlimit(RLIMIT_NOFILE, &descriptors) != 0)
        return false;
    descriptors.rlim_cur = descriptors.rlim_max;
    return ::setrlimit(RLIMIT_NOFILE, &descriptors) == 0;
}

[[noreturn]] void become(char* const* arguments, pid_t parent, int reportDescriptor)
{
    sigset_t none;
    sigemptyset(&none);
    // One that outlived its supervisor would run in a phone that is down.
    if (::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == parent
        && ::sigprocmask(SIG_SETMASK, &none, nullptr) == 0 && allowAllDescriptors()
        && closeOnExecAllBut(reportDescriptor))
        ::execv(arguments[0], arguments);
    ::_exit(exitWhenNotExecuted);
}

} // namespace

bool closeOnExecAllBut(int kept) noexcept
{
    return ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC) == 0
        && (kept <= STDERR_FILENO || ::fcntl(kept, F_SETFD, 0) == 0);
}

ChildProcess startChild(std::vector<std::string> arguments)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return {};
    // What the program has started may hold the other end when the program itself has long ended.
    if (::fcntl(ends[0], F_SETFL, O_NONBLOCK) != 0) {
        ::close(ends[0]);
        ::close(ends[1]);
        return {};
    }
    arguments.emplace_back("--report-fd");
    arguments.push_back(std::to_string(ends[1]));
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const pid_t supervisor = ::getpid();
    const pid_t pid = ::fork();
    if (pid == 0)
        become(pointers.data(), supervisor, ends[1]);
    const int error = errno;
    ::close(ends[1]);
    if (pid < 0) {
        ::close(ends[0]);
        errno = error;
        return {};
    }
    return { pid, ends[0] };
}

} // namespace phone
