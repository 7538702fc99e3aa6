#include "phone/springboard/roads.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/url.h"
#include "platform/runtime/message.h"
#include "record/app_ledger.h"
#include "support/phone_fixture.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace appledger {

using namespace platform;
namespace fs = std::filesystem;

namespace {

constexpr const char* container = "/var/mobile/Containers/Data/Application/notes";
const std::string notes = "com.example.notes";

class DiskOperations : public testing::Test {
protected:
    DiskOperations()
    {
        phone_.device.writeDomain({});
        phone_.with({ notes }).inject().start();
        phone_.device.write(std::string(container) + "/.com.apple.mobile_container_manager.metadata.plist",
            dictionary({ { "MCMMetadataIdentifier", string(notes) } }));
        holdClock();
    }

    std::string in(const char* name) const { return container + std::string("/") + name; }
    fs::path host(const char* name) const { return phone_.device.at(in(name)); }
    void put(const char* name, std::size_t size = 100) const { phone_.device.put(in(name), std::string(size, 'x')); }

    static Ref<ALAppLedger> record() { return ALAppLedger::forBundleIdentifier(string(notes), nil); }

    /// What the operation's completion gets.
    template <Name Operation> static std::string complete(const id& record)
    {
        std::string given = "nothing";
        if constexpr (Operation.view().starts_with("get"))
            send<Operation, void>(record, block([&given](const id& text) { given = describe(text); }));
        else
            send<Operation, void>(record, block([&given] { given = "done"; }));
        runUntilIdle();
        return given;
    }

    /// The names in the container, folders with a slash.
    std::string content() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(phone_.device.at(container)))
            if (!entry.path().filename().string().starts_with(".com."))
                names.push_back(fs::relative(entry.path(), phone_.device.at(container)).string()
                    + (entry.is_directory() && !entry.is_symlink() ? "/" : ""));
        std::ranges::sort(names);
        std::string text;
        for (const std::string& name : names)
            text += name + " ";
        return text;
    }

    support::Phone phone_ { "SpringBoard", "16.0" };
};

std::optional<unsigned long> sizeOf(const std::string& path, id* error = nullptr)
{
    unsigned long size = 7;
    const bool isRead = send<"nr_getAllocatedSize:ofDirectoryAtURL:error:", bool>(
        send<"defaultManager">(id(classNamed<"NSFileManager">())), &size, fileURL(path), error);
    EXPECT_TRUE(isRead || size == 7) << "left as it was";
    return isRead ? std::optional(size) : std::nullopt;
}

unsigned long outputOf(const std::string& command)
{
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    unsigned long number = 0;
    EXPECT_EQ(std::fscanf(pipe, "%lu", &number), 1) << command;
    ::pclose(pipe);
    return number;
}

TEST_F(DiskOperations, SumWhatFilesTakeAsDuDoesWithoutTheFolders)
{
    put("tree/a", 1);
    put("tree/.hidden/deep/er/b", 10000);
    put("tree/Package.app/c", 5000);
    put("outside", 50000);
    fs::create_directories(host("tree/empty"));
    fs::create_symlink("../outside", host("tree/link"));
    fs::create_symlink(".", host("tree/round"));
    fs::create_symlink(std::string(200, 'x'), host("tree/long")); // it has a block of its own
    fs::create_hard_link(host("outside"), host("tree/hard"));
    fs::resize_file(host("tree/a"), 10'000'000); // mostly a hole
    ASSERT_EQ(::mkfifo(host("tree/pipe").c_str(), 0600), 0);
    const std::string tree = "'" + host("tree").string() + "'";
    const unsigned long all = outputOf("du -s -l -B1 " + tree);
    const unsigned long others
        = outputOf("find " + tree + " ! -type f -printf '%b\\n' | awk '{s += $1 * 512} END {print s}'");
    EXPECT_EQ(sizeOf(in("tree")), all - others);
    const unsigned long once = *sizeOf(in("tree"));
    fs::create_hard_link(host("outside"), host("tree/again"));
    EXPECT_GT(*sizeOf(in("tree")), once) << "a file counts once for each of its names";
    EXPECT_EQ(sizeOf(in("tree/empty")), 0U);
    id error;
    EXPECT_EQ(sizeOf(in("missing"), &error), std::nullopt);
    EXPECT_TRUE(error);
    EXPECT_EQ(sizeOf(in("outside")), std::nullopt);
}

TEST_F(DiskOperations, GoAsDeepAsTheTree)
{
    const int depth = 3000;
    fs::create_directories(host("deep"));
    int directory = ::open(host("deep").c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(::mkdirat(directory, "d", 0700), 0);
        const int file = ::openat(directory, "f", O_WRONLY | O_CREAT, 0600);
        ASSERT_EQ(::write(file, "x", 1), 1);
        ::close(file);
        const int below = ::openat(directory, "d", O_RDONLY | O_DIRECTORY);
        ::close(directory);
        directory = below;
    }
    ::close(directory);
    struct stat one;
    ASSERT_EQ(::stat(host("deep/f").c_str(), &one), 0);
    const rlimit few { 80, 80 };
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    EXPECT_EQ(sizeOf(in("deep")), static_cast<unsigned long>(one.st_blocks) * 512 * depth);
    EXPECT_EQ(std::system(("rm -rf '" + host("deep").string() + "'").c_str()), 0);
}

TEST_F(DiskOperations, TellSizesAsTexts)
{
    put("Library/Caches/a", 100000);
    put("tmp/b", 100000);
    put("Documents/c", 3'000'000);
    put("Library/Preferences/d", 1);
    EXPECT_EQ(complete<"getCachesDirectorySizeWithCompletion:">(record()), "\"205 KB\"");
    EXPECT_EQ(complete<"getAppUsageDirectorySizeWithCompletion:">(record()), "\"3.2 MB\"");
    fs::remove_all(host("tmp"));
    EXPECT_EQ(complete<"getCachesDirectorySizeWithCompletion:">(record()), "\"102 KB\"") << "one folder is missing";
}

TEST_F(DiskOperations, OfARecordWithoutDataCompleteAtOnce)
{
    const auto clip = ALAppLedger::forProxy(string("clip"), nil);
    EXPECT_EQ(describe(send<"cacheDirectoriesURLs">(clip)) + describe(send<"appUsageDirectoriesURLs">(clip)), "[][]");
    EXPECT_EQ(complete<"getCachesDirectorySizeWithCompletion:">(clip), "\"Zero KB\"");
    EXPECT_EQ(complete<"clearAppCachesWithCompletion:">(clip), "done");
    EXPECT_EQ(complete<"resetDiskContentWithCompletion:">(clip), "done");
}

TEST_F(DiskOperations, ClearTheCachesAndNothingElse)
{
    put("Library/Caches/a/b");
    put("Library/Caches/.c");
    put("tmp/d");
    put("Library/e");
    put("Documents/f");
    put("kept/g");
    fs::create_directory_symlink("../../kept", host("Library/Caches/link"));
    phone_.enter("tap", { notes });
    EXPECT_EQ(complete<"clearAppCachesWithCompletion:">(record()), "done");
    EXPECT_EQ(content(), "Documents/ Documents/f Library/ Library/Caches/ Library/e kept/ kept/g tmp/ ");
    EXPECT_EQ(phone_.journal(), "") << "the application goes on";
}

TEST_F(DiskOperations, ClearTheDataWhileTheApplicationIsDown)
{
    put("Library/Caches/a");
    put("Library/Preferences/b");
    put("Documents/c/d");
    put("tmp/e");
    put("SystemData/f");
    phone_.enter("tap", { notes });
    std::string whileHeld = "never";
    const auto watch = [&] {
        if (whileHeld == "never")
            whileHeld = phone_.enter("tap", { notes });
    };
    send<"resetDiskContentWithCompletion:", void>(record(), block(watch));
    runUntilIdle();
    EXPECT_EQ(content(), "Documents/ Library/ Library/Preferences/ SystemData/ SystemData/f tmp/ ");
    EXPECT_EQ(whileHeld, "opened com.example.notes") << "it is let go before the completion";
}

TEST_F(DiskOperations, LeaveALinkInTheContainersPlaceAlone)
{
    put("../other/Documents/a");
    put("Library/x");
    fs::remove_all(host("Documents"));
    fs::create_directory_symlink("../other/Documents", host("Documents"));
    EXPECT_EQ(complete<"resetDiskContentWithCompletion:">(record()), "done");
    EXPECT_TRUE(fs::exists(host("../other/Documents/a")));
}

} // namespace

} // namespace appledger
