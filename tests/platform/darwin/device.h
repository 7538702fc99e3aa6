#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <sys/types.h>

/// A device of real processes around one bus daemon, for tests.

namespace platform::test {

/// An empty directory that goes with the object.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    const std::string& path() const noexcept { return path_; }

private:
    std::string path_;
};

/// A bus daemon in a directory of its own, which ends with the object.
class BusDaemon {
public:
    BusDaemon();
    ~BusDaemon();
    BusDaemon(const BusDaemon&) = delete;
    BusDaemon& operator=(const BusDaemon&) = delete;

    const std::string& address() const noexcept { return address_; }
    void signal(int number) const;

    /// SIGKILL, and waits for its end.
    void end();

private:
    TemporaryDirectory directory_;
    std::string address_;
    pid_t process_ = -1;
};

/// A process that runs `body` and ends with what it returns, or with 99 after a failed expectation. Make
/// it before this process uses queues or the bus, which a child can't share.
class Process {
public:
    using Say = std::function<void(std::string_view line)>;

    explicit Process(const std::function<int(const Say& say)>& body);

    /// Kills what still runs.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// The next line that it says; empty when it has ended.
    std::string line();

    void signal(int number) const;

    /// Waits for its end: its exit status, or minus the signal that ended it.
    int wait();

private:
    pid_t process_ = -1;
    int reader_ = -1;
};

} // namespace platform::test
