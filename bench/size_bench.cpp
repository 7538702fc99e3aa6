#include "platform/foundation/classes.h"
#include "platform/foundation/files.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "record/allocated_size.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

/// What the files of a tree take on the disk: the library's sum, beside a bare loop of getdents and fstatat, and a
/// recursive iterator of the standard library. All three run by turns on a tree that the system has in its caches.
///
///     size_bench [FILES] [DIRECTORY] [ROUNDS]

using namespace platform;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const char* what)
{
    std::perror(what);
    std::exit(1);
}

void fill(const fs::path& folder, int files)
{
    constexpr int filesOfAFolder = 500;
    const std::string content(100, 'x');
    for (int index = 0; index < files; ++index) {
        const fs::path where = folder / ("folder-" + std::to_string(index / filesOfAFolder / 10))
            / std::to_string(index / filesOfAFolder);
        if (index % filesOfAFolder == 0)
            fs::create_directories(where);
        const int file = ::open((where / ("file-" + std::to_string(index) + ".bin")).c_str(), O_WRONLY | O_CREAT, 0644);
        if (file < 0 || ::write(file, content.data(), content.size()) < 0)
            fail("can't write the files");
        ::close(file);
    }
}

struct KernelEntry {
    std::uint64_t inode;
    std::int64_t offset;
    unsigned short length;
    unsigned char type;
    char name[1];
};

std::uint64_t bareSize(int directory)
{
    std::uint64_t total = 0;
    alignas(KernelEntry) std::array<char, 32 * 1024> buffer;
    for (long length; (length = ::syscall(SYS_getdents64, directory, buffer.data(), buffer.size())) > 0;)
        for (long position = 0; position < length;) {
            const auto* const entry = reinterpret_cast<const KernelEntry*>(buffer.data() + position);
            const char* const name = buffer.data() + position + offsetof(KernelEntry, name);
            position += entry->length;
            if (entry->type == DT_DIR) {
                if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
                    continue;
                const int below = ::openat(directory, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
                total += bareSize(below);
                ::close(below);
                continue;
            }
            struct stat status;
            if (::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode))
                total += static_cast<std::uint64_t>(status.st_blocks) * 512;
        }
    return total;
}

std::uint64_t sizeByBareLoop(const fs::path& folder)
{
    const int directory = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::uint64_t total = bareSize(directory);
    ::close(directory);
    return total;
}

std::uint64_t sizeByIterator(const fs::path& folder)
{
    std::uint64_t total = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        struct stat status;
        if (entry.is_regular_file() && ::lstat(entry.path().c_str(), &status) == 0)
            total += static_cast<std::uint64_t>(status.st_blocks) * 512;
    }
    return total;
}

std::uint64_t sizeByLibrary(const fs::path&)
{
    unsigned long total = 0;
    if (!send<"nr_getAllocatedSize:ofDirectoryAtURL:error:", bool>(
            send<"defaultManager">(id(classNamed<"NSFileManager">())), &total, fileURL("/tree"),
            static_cast<id*>(nullptr)))
        fail("the tree can't be read");
    return total;
}

struct Method {
    const char* name;
    std::uint64_t (*measure)(const fs::path& folder);
    std::vector<double> times {};
};

double median(std::vector<double> times)
{
    std::ranges::sort(times);
    return times[times.size() / 2];
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int files = argumentCount > 1 ? std::atoi(arguments[1]) : 100000;
    const fs::path directory = argumentCount > 2 ? arguments[2] : fs::temp_directory_path();
    const int rounds = argumentCount > 3 ? std::atoi(arguments[3]) : 11;
    const fs::path root = directory / ("size_bench-" + std::to_string(::getpid()));
    const fs::path tree = root / "tree";
    fill(tree, files);
    if (!setDeviceRoot(root))
        fail("can't open the root");
    for (const ClassDefinition* definition : foundationClasses())
        registerClass(*definition);
    appledger::addAllocatedSize();

    std::array<Method, 3> methods { { { "library", sizeByLibrary }, { "bare getdents and fstatat", sizeByBareLoop },
        { "recursive iterator", sizeByIterator } } };
    const std::uint64_t expected = sizeByBareLoop(tree);
    for (int round = 0; round < rounds; ++round)
        for (Method& method : methods) {
            const Clock::time_point start = Clock::now();
            if (method.measure(tree) != expected)
                std::printf("%s gives another size\n", method.name);
            method.times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        }
    std::printf("%d files, %llu bytes, %d rounds, medians\n", files, static_cast<unsigned long long>(expected), rounds);
    for (const Method& method : methods)
        std::printf("%-26s %8.2f ms  %5.2f times the bare loop\n", method.name, median(method.times),
            median(method.times) / median(methods[1].times));
    fs::remove_all(root);
}
