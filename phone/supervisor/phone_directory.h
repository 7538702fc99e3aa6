#pragma once

#include "platform/darwin/bus_daemon.h"

#include <string>
#include <string_view>
#include <utility>

namespace phone {

/// Where a phone keeps itself on the host: the directory that is its device's root, and inside it a folder
/// of the running phone's own. Both belong to the account that runs the phone, which loads libraries and does what
/// it is told from there: a directory of another account's, or one in which others may write, is used for nothing.
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

    /// Why the directory can't be a phone's, for people: there is none, it isn't the caller's. "" when it can.
    std::string problem() const;

    /// Makes the directory, for its owner alone, where it is missing; and the folder of the running phone. "" or what
    /// couldn't be done.
    std::string make() const;
    std::string makeRunDirectory() const;

    /// Opens a file of the running phone's folder, with the flags of open(2); one that is made is its owner's alone,
    /// as is one that was there. A link isn't followed. A descriptor, or -1 and `errno`.
    int openRunFile(const char* name, int flags) const;
    int openLockFile(int flags) const { return openRunFile("lock", flags); }
    int openLogFile(int flags) const { return openRunFile("log", flags); }

    /// Replaces the content of a file of that folder in one step: it is written beside and renamed. 0, or an `errno`,
    /// and then the file is as it was.
    [[nodiscard]] int replaceRunFile(const char* name, std::string_view content) const;
    /// Gives it another name, which none has. 0, or an `errno`.
    [[nodiscard]] int renameRunFile(const char* name, const char* newName) const;
    /// 0 also where there is none; else an `errno`.
    [[nodiscard]] int removeRunFile(const char* name) const;

    /// Removes the bus's socket, if there is one.
    void removeSocket() const;

    /// The supervisor's process id while the phone is up, else 0.
    int supervisorProcess() const;

private:
    std::string root_;
};

/// The name on the bus of the supervisor, beside those of the processes.
inline constexpr const char* supervisorPeer = "Supervisor";

} // namespace phone
