#include "cli/history/killed_at_step.h"

#include <csignal>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

int stepsLeft = 0; ///< 0: nobody counts

void step()
{
    if (stepsLeft > 0 && --stepsLeft == 0)
        ::raise(SIGKILL);
}

template <class... Arguments> long counted(long number, Arguments... arguments)
{
    step();
    const long result = ::syscall(number, arguments...);
    step();
    return result;
}

} // namespace

// In place of the C library's, for all that this program has loaded.
extern "C" {

[[gnu::visibility("default")]] ssize_t write(int file, const void* bytes, size_t size)
{
    return counted(SYS_write, file, bytes, size);
}

[[gnu::visibility("default")]] int renameat(int from, const char* former, int to, const char* name) noexcept
{
    return static_cast<int>(counted(SYS_renameat, from, former, to, name));
}

[[gnu::visibility("default")]] int fdatasync(int file)
{
    return static_cast<int>(counted(SYS_fdatasync, file));
}

[[gnu::visibility("default")]] int unlinkat(int directory, const char* name, int flags) noexcept
{
    return static_cast<int>(counted(SYS_unlinkat, directory, name, flags));
}

[[gnu::visibility("default")]] int ftruncate(int file, off_t size) noexcept
{
    return static_cast<int>(counted(SYS_ftruncate, file, size));
}

} // extern "C"

namespace cli {

bool runKilledAtStep(int killedAt, const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        stepsLeft = killedAt;
        work();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

} // namespace cli
