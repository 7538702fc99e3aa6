#pragma once

#include "platform/darwin/bus_daemon.h"

#include <string>
#include <utility>

namespace phone {

/// Where a phone keeps itself on the host: the directory that is its device's root, and inside it a folder
/// of the running phone's own.
class PhoneDirectory {
public:
    explicit PhoneDirectory(std::string root)
        : root_(std::move(root))
    {
    }

    const std::string& root() const noexcept { return root_; }
    std::string runDirectory() const { return root_ + "/.phone"; }
    std::string busAddress() const { return platform::busAddress(platform::busSocketPath(runDirectory())); }
    /// Held exclusively by the supervisor as long as the phone is up; the kernel says by whom, and it is empty.
    std::string lockFile() const { return runDirectory() + "/lock"; }
    std::string logFile() const { return runDirectory() + "/log"; }

    /// The supervisor's process id while the phone is up, else 0.
    int supervisorProcess() const;

private:
    std::string root_;
};

/// The name on the bus of the supervisor, beside those of the processes.
inline constexpr const char* supervisorPeer = "Supervisor";

} // namespace phone
