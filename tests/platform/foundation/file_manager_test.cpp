#include "platform/foundation/file_manager.h"

#include "platform/foundation/device_root.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <cstdarg>
#include <fcntl.h>
#include <functional>
#include <set>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace {

/// Called before the code under test opens something in a directory: the moment at which another process could
/// have exchanged it.
std::function<void(const char* name)> beforeOpening;

} // namespace

/// Stands in for the C library's.
extern "C" int openat(int directory, const char* name, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    static bool inside = false;
    if (beforeOpening && !std::exchange(inside, true)) {
        beforeOpening(name);
        inside = false;
    }
    return static_cast<int>(::syscall(SYS_openat, directory, name, flags, mode));
}

namespace platform {
namespace {

namespace fs = std::filesystem;

id enumerator(const id& url)
{
    return send<"enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:">(
        NSFileManager::defaultManager(), url, nil, NSUInteger { 1 }, nil);
}

bool remove(const id& url, id* error = nullptr)
{
    return send<"removeItemAtURL:error:", bool>(NSFileManager::defaultManager(), url, error);
}

/// Empties a directory as its owner would.
bool empty(const id& directory)
{
    bool everythingWent = true;
    const id entries = enumerator(directory);
    while (const id entry = send<"nextObject">(entries))
        everythingWent &= remove(entry);
    return everythingWent;
}

std::string namesIn(const DeviceRoot& device, std::string_view path)
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(device.at(path)))
        names.insert(entry.path().filename());
    std::string text;
    for (const std::string& name : names)
        text += name + " ";
    return text;
}

class FileManager : public testing::Test {
protected:
    FileManager()
    {
        device_.put("/other/kept", "1");
        device_.put("/other/deep/kept", "1");
        fs::create_directories(device_.at("/app/Library/Caches"));
    }
    ~FileManager() override
    {
        EXPECT_EQ(namesIn(device_, "/other"), "deep kept ");
        EXPECT_EQ(namesIn(device_, "/other/deep"), "kept ");
    }

    id caches() const { return urlByAppending(fileURL("/app"), "Library/Caches"); }

    const DeviceRoot device_;
    const std::string other_ = device_.at("/other"); ///< as the host knows it: a link that is followed does harm
};

TEST_F(FileManager, EmptiesADirectoryAndLeavesWhatItsLinksLeadTo)
{
    device_.put("/app/Library/Caches/file", "1");
    device_.put("/app/Library/Caches/.hidden", "1");
    device_.put("/app/Library/Caches/a/b/c/file", "1");
    device_.put("/app/Library/Caches/100% \xC3\xA9", "1");
    fs::create_directories(device_.at("/app/Library/Caches/nothing"));
    device_.link(other_, "/app/Library/Caches/link");
    device_.link(other_ + "/kept", "/app/Library/Caches/a/link");
    device_.link("../../../../../other", "/app/Library/Caches/a/b/link");
    device_.link("nowhere", "/app/Library/Caches/broken");
    EXPECT_TRUE(empty(caches()));
    EXPECT_EQ(namesIn(device_, "/app/Library/Caches"), "");
    EXPECT_TRUE(empty(caches())) << "nothing to do";
}

TEST_F(FileManager, AFolderThatIsALinkItselfIsNotEntered)
{
    fs::remove(device_.at("/app/Library/Caches"));
    device_.link(other_, "/app/Library/Caches");
    EXPECT_FALSE(enumerator(caches()));
    fs::remove_all(device_.at("/app/Library"));
    fs::create_directories(device_.at("/other/deep/Caches"));
    device_.link(other_ + "/deep", "/app/Library");
    EXPECT_FALSE(enumerator(caches())) << "a link on the way";
    EXPECT_FALSE(enumerator(urlByAppending(fileURL("/app"), "../other")));
    EXPECT_FALSE(enumerator(urlByAppending(fileURL("/app"), "nothing")));
    fs::remove(device_.at("/other/deep/Caches"));

    // What is appended to is the system's own, and may be reached through a link.
    device_.link("/app", "/short");
    device_.put("/app/tmp/file", "1");
    EXPECT_TRUE(empty(urlByAppending(fileURL("/short"), "tmp")));
    EXPECT_EQ(namesIn(device_, "/app/tmp"), "");
}

TEST_F(FileManager, AFolderExchangedForALinkInMidWalkLeadsNowhere)
{
    for (const char* const when : { "victim", "inner" }) {
        device_.put("/app/Library/Caches/top/victim/inner/file", "1");
        device_.put("/app/Library/Caches/top/victim/file", "1");
        bool exchanged = false;
        beforeOpening = [&](const char* name) {
            if (exchanged || std::string_view(name) != when)
                return;
            exchanged = true;
            fs::rename(device_.at("/app/Library/Caches/top/victim"), device_.at("/app/away"));
            device_.link(other_, "/app/Library/Caches/top/victim");
        };
        EXPECT_TRUE(empty(caches())) << when;
        beforeOpening = nullptr;
        EXPECT_TRUE(exchanged) << when;
        EXPECT_EQ(namesIn(device_, "/app/Library/Caches"), "") << when;
        fs::remove_all(device_.at("/app/away"));
    }
}

TEST_F(FileManager, ATopLevelFolderExchangedAfterItWasListedLeadsNowhere)
{
    device_.put("/app/Library/Caches/file", "1");
    const id entries = enumerator(caches());
    fs::rename(device_.at("/app/Library/Caches"), device_.at("/app/away"));
    device_.put("/other/file", "not this one");
    device_.link(other_, "/app/Library/Caches");
    EXPECT_TRUE(remove(send<"nextObject">(entries)));
    EXPECT_EQ(namesIn(device_, "/app/away"), "");
    EXPECT_EQ(namesIn(device_, "/other"), "deep file kept ");
    fs::remove(device_.at("/other/file"));
}

TEST_F(FileManager, AVeryDeepTreeGoesWithFewDescriptorsAndALittleStack)
{
    constexpr int depth = 3000;
    int directory = ::open(device_.at("/app/Library/Caches").c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(::mkdirat(directory, "d", 0755), 0);
        ASSERT_EQ(::symlinkat(other_.c_str(), directory, "link"), 0);
        const int below = ::openat(directory, "d", O_RDONLY | O_DIRECTORY);
        ::close(directory);
        directory = below;
    }
    ::close(directory);
    rlimit former {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &former), 0);
    const rlimit few { 64, former.rlim_max };
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    EXPECT_TRUE(empty(caches()));
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &former), 0);
    EXPECT_EQ(namesIn(device_, "/app/Library/Caches"), "");
}

TEST_F(FileManager, AWalkThatLosesItsWayBackNeverGoesUpSomewhereElse)
{
    // Deeper than the walk keeps open; when it climbs, the lowest folder has been moved under the other one.
    std::string path = "/app/Library/Caches";
    for (int level = 0; level < 100; ++level)
        path += "/d";
    fs::create_directories(device_.at(path));
    bool moved = false;
    beforeOpening = [&](const char* name) {
        if (moved || std::string_view(name) != "..")
            return;
        moved = true;
        std::string middle = "/app/Library/Caches";
        for (int level = 0; level < 69; ++level)
            middle += "/d";
        fs::rename(device_.at(middle), device_.at("/other/deep/moved"));
    };
    EXPECT_TRUE(empty(caches())) << "the second walk finds the rest";
    beforeOpening = nullptr;
    EXPECT_TRUE(moved);
    EXPECT_EQ(namesIn(device_, "/app/Library/Caches"), "");
    EXPECT_EQ(namesIn(device_, "/other/deep"), "kept moved ");
    fs::remove_all(device_.at("/other/deep/moved"));
}

TEST_F(FileManager, WhatCannotBeRemovedIsPassedOverAndTheRestGoes)
{
    device_.put("/app/Library/Caches/a/second/file", "1");
    device_.put("/app/Library/Caches/a/first/file", "1");
    device_.put("/app/Library/Caches/z", "1");
    beforeOpening = [&](const char* name) {
        if (std::string_view(name) == "first" || std::string_view(name) == "second")
            device_.put("/app/Library/Caches/a/late", "written while its folder is being emptied");
    };
    EXPECT_FALSE(empty(caches()));
    beforeOpening = nullptr;
    EXPECT_EQ(namesIn(device_, "/app/Library/Caches"), "a ");
    EXPECT_EQ(namesIn(device_, "/app/Library/Caches/a"), "late ");
}

TEST_F(FileManager, RemovesOneItemAndSaysWhyNot)
{
    const auto failureOf = [](const id& url) -> std::int64_t {
        id error;
        if (remove(url, &error))
            return error ? -1 : 0;
        EXPECT_EQ(describe(send<"domain">(error)), R"("NSPOSIXErrorDomain")");
        return send<"code", NSInteger>(error);
    };
    device_.put("/app/tree/a/b", "1");
    device_.link(other_, "/app/link");
    EXPECT_EQ(failureOf(fileURL("/app/tree")), 0);
    EXPECT_EQ(failureOf(fileURL("/app/tree")), ENOENT);
    EXPECT_EQ(failureOf(fileURL("/app/link")), 0);
    device_.link(other_, "/app/link");
    EXPECT_EQ(failureOf(urlByAppending(fileURL("/app"), "link/kept")), ENOTDIR);
    EXPECT_EQ(failureOf(urlByAppending(fileURL("/app"), "link/")), 0);
    EXPECT_EQ(failureOf(urlByAppending(fileURL("/app"), "..")), EINVAL);
    EXPECT_EQ(failureOf(fileURL("/")), EINVAL);
    EXPECT_EQ(failureOf(url("https://example.com/app")), EINVAL);
    EXPECT_EQ(failureOf(nil), EINVAL);
    EXPECT_EQ(namesIn(device_, "/app"), "Library ");
}

TEST_F(FileManager, AnEntrysURLIsOneLikeAnyOther)
{
    device_.put("/app/Library/Caches/a b", "1");
    const id entry = send<"nextObject">(enumerator(caches()));
    EXPECT_EQ(describe(send<"absoluteString">(entry)), R"("file:///app/Library/Caches/a%20b")");
    EXPECT_TRUE(isEqual(entry, fileURL("/app/Library/Caches/a b")));
    EXPECT_EQ(asUrl(send<"URLByAppendingPathComponent:">(entry, string("c")))->path, "/app/Library/Caches/a b/c");
    EXPECT_FALSE(urlByAppending(url("https://example.com"), "c"));
}

} // namespace
} // namespace platform
