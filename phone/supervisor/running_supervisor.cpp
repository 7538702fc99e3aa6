#include "phone/supervisor/running_supervisor.h"

#include <filesystem>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

// The C library's header forgets to say so.
extern "C" {
#include <sys/pidfd.h>
}

namespace phone {

namespace {

/// A process of this account that runs the supervisor's program, also one that was replaced on disk meanwhile.
bool isSupervisor(pid_t process)
{
    const std::string folder = "/proc/" + std::to_string(process);
    struct stat status { };
    if (::stat(folder.c_str(), &status) != 0 || status.st_uid != ::geteuid())
        return false;
    std::error_code failed;
    const std::string program = std::filesystem::read_symlink(folder + "/exe", failed).filename();
    return !failed && (program == "phone-supervisor" || program == "phone-supervisor (deleted)");
}

} // namespace

RunningSupervisor::RunningSupervisor(platform::detail::Descriptor process)
    : process_(std::move(process))
{
}

std::optional<RunningSupervisor> RunningSupervisor::find(const PhoneDirectory& directory)
{
    const pid_t process = directory.supervisorProcess();
    if (process <= 0)
        return std::nullopt;
    platform::detail::Descriptor held(::pidfd_open(process, 0));
    // The number may have been given to another process before it was held.
    if (held.get() < 0 || !isSupervisor(process) || directory.supervisorProcess() != process)
        return std::nullopt;
    return RunningSupervisor(std::move(held));
}

bool RunningSupervisor::signal(int number) const
{
    return ::pidfd_send_signal(process_.get(), number, nullptr, 0) == 0;
}

bool RunningSupervisor::waitUntilEnded(std::chrono::milliseconds limit) const
{
    pollfd ended { process_.get(), POLLIN, 0 };
    return ::poll(&ended, 1, static_cast<int>(limit.count())) > 0;
}

} // namespace phone
