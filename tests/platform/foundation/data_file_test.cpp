#include "platform/foundation/device_root.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <csignal>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {
namespace {

bool write(const id& content, const id& path)
{
    return send<"writeToFile:atomically:", bool>(content, path, true);
}

TEST(DataFile, IsWrittenOrRefused)
{
    const DeviceRoot device;
    const std::string bytes("\0\xFF picture", 10);
    EXPECT_TRUE(write(platform::data(bytes), string("/file")));
    EXPECT_EQ(device.get("/file"), bytes);
    EXPECT_TRUE(write(dataTaking("another"), string("/file")));
    EXPECT_EQ(device.get("/file"), "another");
    EXPECT_TRUE(write(data(""), string("/empty")));
    for (const id& path : { string("/missing/file"), string("/"), string(""), number(2), nil })
        EXPECT_FALSE(write(platform::data(bytes), path)) << describe(path);
}

/// Starts a process that replaces the file, and kills it where it enters or leaves the system for that many times.
/// False when it was done before.
bool killAfter(int moments, const id& content)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        write(content, string("/icon.png"));
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    for (int moment = 0; moment < moments && WIFSTOPPED(status); ++moment) {
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        ::waitpid(child, &status, 0);
    }
    if (!WIFSTOPPED(status))
        return false;
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    return true;
}

TEST(DataFile, IsTheOldOrTheNewOneWhereverItsWriterIsKilled)
{
    const std::string former(50'000, 'o');
    const std::string content(70'000, 'n');
    bool wasNew = false;
    int moments = 0;
    for (bool wasKilled = true; wasKilled; ++moments) {
        const DeviceRoot device;
        device.put("/icon.png", former);
        wasKilled = killAfter(moments, platform::data(content));
        const std::string found = device.get("/icon.png");
        const bool isNew = found == content;
        ASSERT_TRUE(isNew || found == former) << moments << ": " << found.size() << " bytes";
        // Once it is the new one it stays.
        ASSERT_TRUE(isNew || !wasNew) << moments;
        wasNew = isNew;
        ASSERT_TRUE(write(platform::data(former), string("/icon.png"))) << moments;
        ASSERT_EQ(directoryEntries("/"), std::vector<std::string> { "icon.png" }) << moments;
    }
    EXPECT_TRUE(wasNew);
    EXPECT_GT(moments, 10);
}

} // namespace
} // namespace platform
