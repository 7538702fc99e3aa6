#include "platform/darwin/device.h"

#include "platform/darwin/bus_daemon.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace platform::test {

namespace {

int waitFor(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) { }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace

TemporaryDirectory::TemporaryDirectory()
{
    std::string path = std::filesystem::temp_directory_path() / "appledger-XXXXXX";
    EXPECT_NE(mkdtemp(path.data()), nullptr);
    path_ = path;
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

BusDaemon::BusDaemon()
    : address_(busAddress(busSocketPath(directory_.path())))
{
    std::string error;
    process_ = startBusDaemon(directory_.path(), error);
    EXPECT_GT(process_, 0) << error;
}

BusDaemon::~BusDaemon()
{
    end();
}

void BusDaemon::signal(int number) const
{
    EXPECT_EQ(kill(process_, number), 0);
}

void BusDaemon::end()
{
    if (process_ <= 0)
        return;
    signal(SIGKILL);
    waitFor(std::exchange(process_, -1));
}

Process::Process(const std::function<int(const Say& say)>& body)
{
    std::array<int, 2> ends { -1, -1 };
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    process_ = fork();
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int result = body([&](std::string_view line) {
            const std::string text = std::string(line) + '\n';
            EXPECT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        });
        _exit(testing::Test::HasFailure() ? 99 : result);
    }
    EXPECT_GT(process_, 0);
    close(ends[1]);
    reader_ = ends[0];
}

Process::~Process()
{
    close(reader_);
    if (process_ <= 0)
        return;
    signal(SIGKILL);
    wait();
}

std::string Process::line()
{
    std::string line;
    for (char character = 0; read(reader_, &character, 1) == 1 && character != '\n';)
        line += character;
    return line;
}

void Process::signal(int number) const
{
    EXPECT_EQ(kill(process_, number), 0);
}

int Process::wait()
{
    return waitFor(std::exchange(process_, -1));
}

} // namespace platform::test
