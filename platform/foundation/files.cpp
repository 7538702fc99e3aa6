#include "platform/foundation/files.h"

#include "platform/foundation/device_path.h"
#include "platform/foundation/directory_tree.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace platform {

namespace {

FileStamp stampOf(const struct stat& status) noexcept
{
    return { status.st_dev, status.st_ino,
        status.st_mtim.tv_sec * std::int64_t { 1'000'000'000 } + status.st_mtim.tv_nsec,
        static_cast<std::uint64_t>(status.st_size) };
}

std::optional<struct stat> statusOf(std::string_view path)
{
    const detail::Opening opening = detail::openDevicePath(path, O_PATH);
    struct stat status;
    if (!opening.descriptor || ::fstat(opening.descriptor.get(), &status) != 0)
        return std::nullopt;
    return status;
}

/// Creates the directory that the path names. 0 also when somebody else has just done so.
int createDirectory(std::string_view path)
{
    const detail::Entry entry = detail::openEntry(path);
    if (!entry.directory)
        return entry.error;
    if (::mkdirat(entry.directory.get(), entry.name.c_str(), 0755) == 0)
        return 0;
    const int error = errno;
    return error == EEXIST && directoryExists(path) ? 0 : error;
}

} // namespace

FileKind fileKind(std::string_view path)
{
    const auto status = statusOf(path);
    if (!status)
        return FileKind::Missing;
    if (S_ISREG(status->st_mode))
        return FileKind::Regular;
    return S_ISDIR(status->st_mode) ? FileKind::Directory : FileKind::Other;
}

std::optional<FileStamp> fileStamp(std::string_view path)
{
    const auto status = statusOf(path);
    return status && S_ISREG(status->st_mode) ? std::optional(stampOf(*status)) : std::nullopt;
}

namespace {

FileReading readOpened(const detail::Opening& opening, std::size_t limit)
{
    const auto failed = [](int error, std::string problem = {}) {
        return FileReading { {}, {}, error, problem.empty() ? std::strerror(error) : std::move(problem) };
    };
    const auto tooLarge = [&] { return failed(EFBIG, "it is larger than " + std::to_string(limit) + " bytes"); };
    if (opening.error == ENXIO)
        return failed(ENXIO, "it isn't a regular file");
    if (!opening.descriptor)
        return failed(opening.error);
    struct stat status;
    if (::fstat(opening.descriptor.get(), &status) != 0)
        return failed(errno);
    if (S_ISDIR(status.st_mode))
        return failed(EISDIR, "it is a folder");
    if (!S_ISREG(status.st_mode))
        return failed(ENXIO, "it isn't a regular file");
    if (static_cast<std::uint64_t>(status.st_size) > limit)
        return tooLarge();

    // One byte more than the file has, so that its end shows in the first reading.
    std::string content(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t count = ::read(opening.descriptor.get(), content.data() + length, content.size() - length);
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            return failed(errno);
        length += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        if (length > limit)
            return tooLarge();
        if (length == content.size())
            content.resize(length * 2);
    }
    content.resize(length);
    return { std::move(content), stampOf(status), 0, {} };
}

// Without O_NONBLOCK a pipe that lies there would hold the caller until somebody writes.
constexpr int readingFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY;

} // namespace

FileReading tryToReadFile(std::string_view path, std::size_t limit)
{
    return readOpened(detail::openDevicePath(path, readingFlags), limit);
}

FileReading tryToReadHostFile(const std::string& path, std::size_t limit)
{
    detail::Opening opening;
    opening.descriptor = detail::Descriptor(::open(path.c_str(), readingFlags | O_CLOEXEC));
    opening.error = opening.descriptor ? 0 : errno;
    return readOpened(opening, limit);
}

std::optional<std::string> readFile(std::string_view path, std::size_t limit)
{
    return tryToReadFile(path, limit).content;
}

int createDirectories(std::string_view path)
{
    for (std::size_t end = 0; end < path.size();) {
        end = std::min(path.find('/', end + 1), path.size());
        const std::string_view prefix = path.substr(0, end);
        int error = detail::openDevicePath(prefix, O_PATH | O_DIRECTORY).error;
        if (error == ENOENT)
            error = createDirectory(prefix);
        if (error != 0)
            return error;
    }
    return path.empty() ? ENOENT : 0;
}

int setFileMode(std::string_view path, unsigned mode)
{
    const detail::Opening opening = detail::openDevicePath(path, O_RDONLY | O_NONBLOCK);
    if (!opening.descriptor)
        return opening.error;
    return ::fchmod(opening.descriptor.get(), mode & 07777) == 0 ? 0 : errno;
}

int removeFile(std::string_view path)
{
    const detail::Entry entry = detail::openEntry(path);
    if (!entry.directory)
        return entry.error;
    const int directory = entry.directory.get();
    if (!entry.endsWithSlash) {
        if (::unlinkat(directory, entry.name.c_str(), 0) == 0)
            return 0;
        if (errno != EISDIR)
            return errno;
    }
    return ::unlinkat(directory, entry.name.c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
}

int removeTree(std::string_view path)
{
    const detail::Entry entry = detail::openEntry(path);
    if (!entry.directory)
        return entry.error == ENOENT ? 0 : entry.error;
    return detail::removeTree(entry.directory.get(), entry.name.c_str(), detail::EntryKind::Unknown);
}

int moveFile(std::string_view from, std::string_view to)
{
    const detail::Entry former = detail::openEntry(from);
    const detail::Entry later = detail::openEntry(to);
    if (!former.directory || !later.directory)
        return former.directory ? later.error : former.error;
    const int result = ::renameat2(
        former.directory.get(), former.name.c_str(), later.directory.get(), later.name.c_str(), RENAME_NOREPLACE);
    return result == 0 ? 0 : errno;
}

std::vector<std::string> directoryEntries(std::string_view path)
{
    detail::Opening opening = detail::openDevicePath(path, O_RDONLY | O_DIRECTORY);
    DIR* const stream = opening.descriptor ? ::fdopendir(opening.descriptor.get()) : nullptr;
    if (!stream)
        return {};
    opening.descriptor.release();
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* const entry = ::readdir(stream)) {
        std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(std::move(name));
    }
    if (errno != 0)
        names.clear();
    ::closedir(stream);
    std::ranges::sort(names);
    return names;
}

FileLock::FileLock(std::string_view path, std::chrono::milliseconds patience)
{
    using std::chrono::steady_clock;
    const detail::Entry entry = detail::openEntry(path);
    error_ = entry.error;
    if (!entry.directory)
        return;
    descriptor_ = ::openat(
        entry.directory.get(), entry.name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    if (descriptor_ < 0) {
        error_ = errno;
        return;
    }
    // The system's own waiting for such a lock has no end, so that it is asked for again and again: soon at first.
    constexpr std::chrono::microseconds longestPause { 4000 };
    std::chrono::microseconds pause { 100 };
    const auto deadline = steady_clock::now() + patience;
    while (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR)
            continue;
        if (errno != EWOULDBLOCK || steady_clock::now() >= deadline) {
            error_ = errno == EWOULDBLOCK ? ETIMEDOUT : errno;
            return;
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, longestPause);
    }
}

FileLock::~FileLock()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::string pathByAppending(std::string_view path, std::string_view component)
{
    const std::size_t start = std::min(component.find_first_not_of('/'), component.size());
    if (path.empty())
        return std::string(component);
    std::string joined(path.substr(0, path.find_last_not_of('/') + 1));
    joined += '/';
    joined += component.substr(start);
    return joined;
}

std::string pathByDeletingLastComponent(std::string_view path)
{
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string_view::npos)
        return path.empty() ? "" : "/";
    const std::size_t slash = path.rfind('/', end);
    if (slash == std::string_view::npos)
        return "";
    const std::size_t parentEnd = path.find_last_not_of('/', slash);
    return parentEnd == std::string_view::npos ? "/" : std::string(path.substr(0, parentEnd + 1));
}

} // namespace platform
