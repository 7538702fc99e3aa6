#include "platform/foundation/files.h"

#include "platform/foundation/device_path.h"
#include "platform/foundation/device_root.h"

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace platform {
namespace {

unsigned modeOf(const std::filesystem::path& path)
{
    struct stat status { };
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST(Files, AreReadWholeWithinALimit)
{
    const DeviceRoot device;
    const std::string content(100'000, 'x');
    device.put("/big", content);
    device.put("/empty", "");
    EXPECT_EQ(readFile("/big"), content);
    EXPECT_EQ(readFile("/big", 100'000), content);
    EXPECT_EQ(readFile("/big", 99'999), std::nullopt);
    EXPECT_EQ(readFile("/empty"), "");
    EXPECT_EQ(readFile("/"), std::nullopt);
    EXPECT_EQ(readFile("/missing"), std::nullopt);
}

TEST(Files, APipeIsNeitherReadNorWaitedFor)
{
    const DeviceRoot device;
    ASSERT_EQ(::mkfifo(device.at("/pipe").c_str(), 0600), 0);
    EXPECT_EQ(readFile("/pipe"), std::nullopt);
    EXPECT_EQ(fileKind("/pipe"), FileKind::Other);
    EXPECT_EQ(fileStamp("/pipe"), std::nullopt);
}

TEST(Files, AStampTellsOneContentFromAnother)
{
    const DeviceRoot device;
    device.put("/file", "one");
    const FileStamp read = tryToReadFile("/file", 10).stamp;
    EXPECT_EQ(fileStamp("/file"), read);
    ASSERT_EQ(writeFileAtomically("/file", "two"), 0);
    EXPECT_NE(fileStamp("/file"), read);
    EXPECT_EQ(fileStamp("/"), std::nullopt);
}

class Writing : public testing::TestWithParam<detail::KernelHelp> {
protected:
    Writing() { detail::setKernelHelp(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Files, Writing, testing::Values(detail::KernelHelp::Asked, detail::KernelHelp::Declined),
    [](const auto& info) { return info.param == detail::KernelHelp::Asked ? "WithKernelHelp" : "WithoutKernelHelp"; });

TEST_P(Writing, ReplacesInOneStepAndKeepsTheMode)
{
    const DeviceRoot device;
    ::umask(077);
    EXPECT_EQ(writeFileAtomically("/new", "1", 0640), 0);
    EXPECT_EQ(modeOf(device.at("/new")), 0640U);
    ::chmod(device.at("/new").c_str(), 0604);
    EXPECT_EQ(writeFileAtomically("/new", "2", 0640), 0);
    EXPECT_EQ(device.get("/new"), "2");
    EXPECT_EQ(modeOf(device.at("/new")), 0604U);
    EXPECT_EQ(directoryEntries("/"), std::vector<std::string> { "new" });

    EXPECT_EQ(createDirectories("/dir"), 0);
    EXPECT_EQ(writeFileAtomically("/dir", "x"), EISDIR);
    EXPECT_EQ(writeFileAtomically("/new/", "x"), EISDIR);
    EXPECT_EQ(writeFileAtomically("/missing/x", "x"), ENOENT);
    EXPECT_EQ(directoryEntries("/dir"), std::vector<std::string> {});
}

TEST_P(Writing, OnAFullDiskLeavesTheFormerContentAndNothingElse)
{
    const DeviceRoot device;
    device.put("/file", "former");
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit small { 4096, RLIM_INFINITY };
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const int error = writeFileAtomically("/file", std::string(10'000, 'x'));
    const rlimit unlimited { RLIM_INFINITY, RLIM_INFINITY };
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &unlimited), 0);
    EXPECT_EQ(error, EFBIG);
    EXPECT_EQ(device.get("/file"), "former");
    EXPECT_EQ(directoryEntries("/"), std::vector<std::string> { "file" });
}

TEST_P(Writing, RemovesWhatKilledWritersLeftAndNothingElse)
{
    const DeviceRoot device;
    device.put("/dir/.new-1-1", "left by a writer that is gone");
    device.put("/dir/.new-1-2", "of a writer that lives");
    device.put("/dir/.newer", "somebody's");
    EXPECT_EQ(createDirectories("/dir/.new-directory"), 0);
    const int writer = ::open(device.at("/dir/.new-1-2").c_str(), O_RDONLY);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    EXPECT_EQ(writeFileAtomically("/dir/file", "x"), 0);
    EXPECT_EQ(directoryEntries("/dir"), (std::vector<std::string> { ".new-1-2", ".new-directory", ".newer", "file" }));
    ::close(writer);
    EXPECT_EQ(writeFileAtomically("/dir/file", "y"), 0);
    EXPECT_EQ(directoryEntries("/dir"), (std::vector<std::string> { ".new-directory", ".newer", "file" }));
}

TEST_P(Writing, NobodyTakesALivingWritersFileForLitter)
{
    const DeviceRoot device;
    std::vector<pid_t> children;
    for (int child = 0; child < 4; ++child) {
        children.push_back(::fork());
        if (children.back() == 0) {
            const std::string own = "/file" + std::to_string(child);
            for (int step = 0; step < 400; ++step)
                if (writeFileAtomically(own, std::to_string(step)) != 0)
                    ::_exit(1);
            ::_exit(0);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(directoryEntries("/").size(), 4U);
}

TEST_P(Writing, AWriterKilledAtAnyInstantLeavesNothingForLong)
{
    const DeviceRoot device;
    std::mt19937 random(5);
    for (int round = 0; round < 40; ++round) {
        int reports[2];
        ASSERT_EQ(::pipe(reports), 0);
        const pid_t child = ::fork();
        if (child == 0)
            for (;;)
                if (writeFileAtomically("/file", std::string(6000, 'x')) != 0 || ::write(reports[1], "", 1) != 1)
                    ::_exit(1);
        ::close(reports[1]);
        char report = 0;
        ASSERT_EQ(::read(reports[0], &report, 1), 1);
        for (auto spins = random() % 200'000; spins > 0; --spins)
            std::atomic_signal_fence(std::memory_order_seq_cst);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ::close(reports[0]);
        EXPECT_EQ(device.get("/file").size(), 6000U);
    }
    EXPECT_EQ(writeFileAtomically("/file", ""), 0);
    EXPECT_EQ(directoryEntries("/"), std::vector<std::string> { "file" });
}

TEST_P(Writing, OfAHostsFileGoesBesideAndRenames)
{
    const DeviceRoot device;
    const auto at = [&](const char* name) { return (device.outside() / name).string(); };
    EXPECT_EQ(writeHostFileAtomically(at("picture"), "1"), 0);
    std::filesystem::create_symlink("picture", at("link"));
    const int former = ::open(at("picture").c_str(), O_RDONLY);
    EXPECT_EQ(writeHostFileAtomically(at("link"), "22"), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(at("link")));
    EXPECT_EQ(std::filesystem::file_size(at("picture")), 2U);
    struct stat status { };
    ASSERT_EQ(::fstat(former, &status), 0);
    EXPECT_EQ(status.st_size, 1); // who reads the former picture reads all of it
    ::close(former);
    ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(writeHostFileAtomically(at("pipe"), "x"), ENXIO);
    const int reader = ::open(at("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(writeHostFileAtomically(at("pipe"), "x"), 0);
    char byte = 0;
    EXPECT_EQ(::read(reader, &byte, 1), 1);
    ::close(reader);
    EXPECT_EQ(writeHostFileAtomically(device.outside(), "x"), EISDIR);
    EXPECT_EQ(writeHostFileAtomically(at("missing/picture"), "x"), ENOENT);
}

TEST(Files, TellWhyTheyCanNotBeRead)
{
    const DeviceRoot device;
    device.put("/file", "12345");
    ASSERT_EQ(::mkfifo(device.at("/pipe").c_str(), 0600), 0);
    device.link("/loop", "/loop");
    const std::pair<std::string_view, int> cases[] { { "/missing", ENOENT }, { "/", EISDIR }, { "/pipe", ENXIO },
        { "/file/below", ENOTDIR }, { "/loop", ELOOP }, { "/file", EFBIG } };
    for (const auto& [path, error] : cases) {
        const FileReading reading = tryToReadFile(path, 4);
        EXPECT_EQ(reading.error, error) << path;
        EXPECT_NE(reading.problem, "") << path;
        EXPECT_FALSE(reading.content) << path;
    }
    const FileReading whole = tryToReadFile("/file", 5);
    EXPECT_EQ(whole.content, "12345");
    EXPECT_EQ(whole.problem, "");
}

TEST(Files, ATreeIsRemovedBeneathTheRootAlone)
{
    const DeviceRoot device;
    const std::string elsewhere = device.outside() / "elsewhere";
    std::filesystem::create_directories(elsewhere + "/app");
    std::ofstream(elsewhere + "/app/precious") << "precious";
    device.put(elsewhere + "/app/inner/file", "the device's own");
    device.link(elsewhere, "/var");
    device.link(elsewhere, elsewhere + "/app/link");
    EXPECT_EQ(removeTree("/var/app"), 0);
    EXPECT_FALSE(fileExists(elsewhere + "/app"));
    EXPECT_TRUE(std::filesystem::exists(elsewhere + "/app/precious"));
    EXPECT_EQ(removeTree("/var/app"), 0);
    EXPECT_EQ(removeTree("/.."), EINVAL);
}

TEST(Files, AreMovedWholeBeneathTheRootAndOverNothing)
{
    const DeviceRoot device;
    device.put("/from/tree/deep/file", "x");
    device.put("/to/there", "y");
    EXPECT_EQ(moveFile("/from/tree", "/to/there"), EEXIST);
    EXPECT_EQ(device.get("/to/there"), "y");
    EXPECT_EQ(moveFile("/from/tree", "/nowhere/tree"), ENOENT);
    EXPECT_EQ(moveFile("/from/nothing", "/to/nothing"), ENOENT);
    EXPECT_EQ(moveFile("/from/tree", "/../../to/tree"), 0);
    EXPECT_EQ(device.get("/to/tree/deep/file"), "x");
    EXPECT_FALSE(fileExists("/from/tree"));
    device.link("/to/there", "/from/link");
    EXPECT_EQ(moveFile("/from/link", "/to/link"), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(device.at("/to/link")));
    EXPECT_EQ(device.get("/to/there"), "y");
}

TEST(Files, DirectoriesAreMadeListedAndRemoved)
{
    const DeviceRoot device;
    EXPECT_EQ(createDirectories("/b/c"), 0);
    EXPECT_EQ(createDirectories("/b/c"), 0);
    EXPECT_EQ(createDirectories("/"), 0);
    device.put("/b/z", "");
    device.put("/b/.hidden", "");
    EXPECT_EQ(directoryEntries("/b"), (std::vector<std::string> { ".hidden", "c", "z" }));
    EXPECT_EQ(directoryEntries("/b/z"), std::vector<std::string> {});
    EXPECT_EQ(removeFile("/b"), ENOTEMPTY);
    EXPECT_EQ(removeFile("/b/z/"), ENOTDIR);
    EXPECT_EQ(removeFile("/b/z"), 0);
    EXPECT_EQ(removeFile("/b/c/"), 0);
    EXPECT_EQ(removeFile("/b/c"), ENOENT);
    EXPECT_EQ(createDirectories("/b/.hidden/x"), ENOTDIR);
}

/// Adds one to the number in the file, which loses nothing only if nobody else does so meanwhile.
void countUp()
{
    const FileLock lock("/lock");
    EXPECT_EQ(lock.error(), 0);
    const int count = std::stoi(readFile("/count").value_or("0"));
    EXPECT_EQ(writeFileAtomically("/count", std::to_string(count + 1)), 0);
}

TEST(FileLocks, ExcludeThreadsAndProcesses)
{
    const DeviceRoot device;
    std::vector<pid_t> children;
    for (int child = 0; child < 2; ++child) {
        children.push_back(::fork());
        if (children.back() == 0) {
            for (int step = 0; step < 100; ++step)
                countUp();
            ::_exit(0);
        }
    }
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 2; ++thread)
        threads.emplace_back([] {
            for (int step = 0; step < 100; ++step)
                countUp();
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const pid_t child : children)
        ::waitpid(child, nullptr, 0);
    EXPECT_EQ(device.get("/count"), "400");
}

TEST(FileLocks, AHolderThatDiesLetsGo)
{
    const DeviceRoot device;
    const pid_t child = ::fork();
    if (child == 0) {
        const FileLock lock("/lock");
        ::raise(SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(FileLock("/lock").error(), 0);
}

TEST(FileLocks, AreNotWaitedForWithoutEnd)
{
    const DeviceRoot device;
    std::optional<FileLock> held(std::in_place, "/lock");
    EXPECT_EQ(FileLock("/lock", std::chrono::milliseconds(1)).error(), ETIMEDOUT);
    held.reset();
    EXPECT_EQ(FileLock("/lock", std::chrono::milliseconds(0)).error(), 0);
}

TEST(FileLocks, TellWhyTheyAreNotHeld)
{
    const DeviceRoot device;
    device.link("/elsewhere", "/link");
    EXPECT_EQ(FileLock("/missing/lock").error(), ENOENT);
    EXPECT_EQ(FileLock("/link").error(), ELOOP);
    EXPECT_EQ(FileLock("/..").error(), EINVAL);
}

TEST(PathText, JoinsAndCuts)
{
    const std::string_view joined[][3] {
        { "/a", "b", "/a/b" },
        { "/a/", "/b", "/a/b" },
        { "/a//", "//b/c", "/a/b/c" },
        { "", "b", "b" },
        { "/", "b", "/b" },
    };
    for (const auto& [path, component, expected] : joined)
        EXPECT_EQ(pathByAppending(path, component), expected);
    const std::string_view cut[][2] {
        { "/a/b/c.plist", "/a/b" },
        { "/a/b/c/", "/a/b" },
        { "/a//b//", "/a" },
        { "/a", "/" },
        { "//", "/" },
        { "a", "" },
        { "a/b", "a" },
        { "", "" },
    };
    for (const auto& [path, expected] : cut)
        EXPECT_EQ(pathByDeletingLastComponent(path), expected) << path;
}

} // namespace
} // namespace platform
