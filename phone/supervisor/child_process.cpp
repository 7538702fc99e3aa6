#include "phone/supervisor/child_process.h"

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace phone {

ChildProcess startChild(std::vector<std::string> arguments)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return {};
    arguments.emplace_back("--ready-fd");
    arguments.push_back(std::to_string(ends[1]));
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const pid_t supervisor = ::getpid();
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != supervisor)
            ::_exit(1);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        ::fcntl(ends[1], F_SETFD, 0);
        ::execv(pointers.front(), pointers.data());
        ::_exit(127);
    }
    ::close(ends[1]);
    if (pid < 0) {
        ::close(ends[0]);
        return {};
    }
    return { pid, ends[0] };
}

} // namespace phone
