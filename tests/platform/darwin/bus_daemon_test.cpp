#include "platform/darwin/bus_daemon.h"

#include "platform/darwin/bus.h"
#include "platform/darwin/device.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace platform;
using namespace platform::test;

namespace {

bool canConnect(const std::string& directory)
{
    const bool connected = connectBus(busAddress(busSocketPath(directory)), {}, [] {});
    disconnectBus();
    return connected;
}

void end(pid_t daemon, int number)
{
    ASSERT_GT(daemon, 0);
    EXPECT_EQ(kill(daemon, number), 0);
    EXPECT_EQ(waitpid(daemon, nullptr, 0), daemon);
}

TEST(StartBusDaemon, ItsFilesAreTheOwnersAloneAndNoLinkOfAFormerOneIsFollowed)
{
    namespace fs = std::filesystem;
    const TemporaryDirectory directory;
    const fs::path run = fs::path(directory.path()) / "run";
    fs::create_directory(run);
    for (const char* const name : { "bus.log", "bus.conf" }) {
        const fs::path precious = fs::path(directory.path()) / name;
        std::ofstream(precious) << "precious";
        fs::create_symlink(precious, run / name);
    }
    std::string error;
    const pid_t daemon = startBusDaemon(run, error);
    EXPECT_TRUE(canConnect(run)) << error;
    constexpr auto ownersAlone = fs::perms::owner_read | fs::perms::owner_write;
    for (const char* const name : { "bus", "bus.log", "bus.conf" })
        EXPECT_EQ(fs::symlink_status(run / name).permissions(), ownersAlone) << name;
    for (const char* const name : { "bus.log", "bus.conf" })
        EXPECT_EQ(fs::file_size(fs::path(directory.path()) / name), 8U) << name;
    end(daemon, SIGTERM);
}

TEST(StartBusDaemon, OutlivesAShortageOfDescriptorsInWhoStartsIt)
{
    const TemporaryDirectory directory;
    rlimit usual {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit few { 32, usual.rlim_max };
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    std::string error;
    const pid_t daemon = startBusDaemon(directory.path(), error);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
    ASSERT_GT(daemon, 0) << error;
    rlimit own {};
    EXPECT_EQ(prlimit(daemon, RLIMIT_NOFILE, nullptr, &own), 0);
    EXPECT_EQ(own.rlim_cur, own.rlim_max);
    end(daemon, SIGTERM);
}

TEST(StartBusDaemon, ListensWhenItReturnsInADirectoryOfAnyName)
{
    const TemporaryDirectory parent;
    const std::string directory = parent.path() + "/a b&<c>%,;='\"\xC3\xA9";
    std::filesystem::create_directory(directory);
    std::string error;
    const pid_t daemon = startBusDaemon(directory, error);
    EXPECT_EQ(error, "");
    EXPECT_TRUE(canConnect(directory));
    // A daemon that was killed leaves its socket behind; the next one takes its place.
    end(daemon, SIGKILL);
    EXPECT_TRUE(std::filesystem::exists(busSocketPath(directory)));
    EXPECT_FALSE(canConnect(directory));
    const pid_t next = startBusDaemon(directory, error);
    EXPECT_TRUE(canConnect(directory));
    end(next, SIGTERM);
}

TEST(StartBusDaemon, SaysWhyItCannot)
{
    const TemporaryDirectory directory;
    const auto errorIn = [](const std::string& path) {
        std::string error;
        EXPECT_EQ(startBusDaemon(path, error), -1);
        return error;
    };
    const std::string longest = directory.path() + '/' + std::string(95 - directory.path().size() - 1, 'x');
    std::filesystem::create_directory(longest);
    std::filesystem::create_directory(longest + 'x');
    EXPECT_EQ(busSocketPath(longest).size(), 99U);
    std::string error;
    end(startBusDaemon(longest, error), SIGTERM);
    EXPECT_EQ(error, "");
    EXPECT_EQ(errorIn(longest + 'x'),
        "the path of the bus's socket is longer than 99 bytes: " + busSocketPath(longest + 'x'));

    EXPECT_EQ(
        errorIn(directory.path() + "/missing"), "the bus's files can't be written in " + directory.path() + "/missing");

    std::filesystem::create_directories(busSocketPath(directory.path()) + "/in the way");
    EXPECT_NE(errorIn(directory.path()).find("dbus-daemon didn't start to listen: "), std::string::npos);

    setenv("PATH", "/nonexistent", 1);
    EXPECT_NE(errorIn(directory.path()).find("isn't installed"), std::string::npos);
}

TEST(StartBusDaemon, StartsADaemonThatEndsWithItsParent)
{
    const TemporaryDirectory directory;
    Process parent([&](const Process::Say& say) {
        // Who runs the device may have blocked signals, to read them one by one.
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, nullptr);
        std::string error;
        say(std::to_string(startBusDaemon(directory.path(), error)));
        pause();
        return 0;
    });
    const pid_t daemon = std::stoi(parent.line());
    ASSERT_GT(daemon, 0);
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, daemon, 0));
    ASSERT_GE(descriptor, 0);
    pollfd polled { descriptor, POLLIN, 0 };
    EXPECT_EQ(poll(&polled, 1, 0), 0);
    parent.signal(SIGKILL);
    EXPECT_EQ(poll(&polled, 1, 60'000), 1);
    close(descriptor);
}

} // namespace
