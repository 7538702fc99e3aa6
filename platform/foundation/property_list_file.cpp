#include "platform/foundation/property_list_file.h"

#include "platform/foundation/device_path.h"
#include "platform/foundation/property_list_guard.h"
#include "platform/foundation/values.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

/// Two changes of a file within this time may leave the same stamp.
constexpr std::chrono::nanoseconds stampPrecision = std::chrono::milliseconds(20);

bool isOfKind(const id& value, PropertyListRoot root)
{
    return root == PropertyListRoot::Array ? asArray(value).has_value() : asDictionary(value).has_value();
}

/// The file beside it that is locked: not the file itself, which a write exchanges.
std::string lockPathOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/') + 1;
    return path.substr(0, slash) + "." + path.substr(slash) + ".lock";
}

bool isSameFile(int directory, const std::string& one, const std::string& other)
{
    struct stat first { };
    struct stat second { };
    return ::fstatat(directory, one.c_str(), &first, AT_SYMLINK_NOFOLLOW) == 0
        && ::fstatat(directory, other.c_str(), &second, AT_SYMLINK_NOFOLLOW) == 0 && first.st_dev == second.st_dev
        && first.st_ino == second.st_ino;
}

} // namespace

WriteOutcome refusedValue(std::string_view path)
{
    return { EINVAL, "can't write " + std::string(path) + ": no property list can hold the value" };
}

PropertyListFile::PropertyListFile(std::string path, const PropertyListFileKind& kind)
    : path_(std::move(path))
    , kind_(kind)
{
}

const id& PropertyListFile::read()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    if (stamp_ && isSettled_ && fileStamp(path_) == stamp_)
        return content_;
    stamp_.reset();
    FileReading reading = tryToReadFile(path_, detail::largestPropertyList);
    if (reading.content) {
        stamp_ = reading.stamp;
        isSettled_ = now - std::chrono::nanoseconds(reading.stamp.modifiedNanoseconds) > stampPrecision;
        understand(std::move(*reading.content));
        return content_;
    }
    bytes_.clear();
    content_ = nil;
    isDamaged_ = false;
    error_ = reading.error == ENOENT ? 0 : reading.error;
    problem_ = error_ == 0 ? std::string() : std::move(reading.problem);
    return content_;
}

void PropertyListFile::understand(std::string bytes)
{
    if (bytes == bytes_ && content_)
        return;
    const PropertyListReading reading = readPropertyList(bytes);
    const bool isRight = isOfKind(reading.value, kind_.root);
    content_ = isRight ? reading.value : nil;
    isDamaged_ = reading.isDamaged || (reading.value && !isRight);
    error_ = reading.value || isDamaged_ ? 0 : EFBIG;
    problem_ = reading.problem;
    if (reading.value && !isRight)
        problem_ = kind_.root == PropertyListRoot::Array ? "it doesn't hold a list" : "it doesn't hold a dictionary";
    isOwn_ = false;
    bytes_ = std::move(bytes);
}

WriteOutcome PropertyListFile::takeLock(std::optional<FileLock>& lock) const
{
    lock.reset();
    if (const int error = createDirectories(pathByDeletingLastComponent(path_)))
        return refused(error, std::strerror(error));
    const std::string lockPath = lockPathOf(path_);
    lock.emplace(lockPath);
    const int error = lock->error();
    if (error == 0)
        return {};
    lock.reset();
    return error == ETIMEDOUT ? refused(error, "somebody holds its lock, " + lockPath + ", and doesn't let it go")
                              : refused(error, lockPath + " can't be locked: " + std::strerror(error));
}

WriteOutcome PropertyListFile::change(const FileLock&, const PropertyListChange& change)
{
    const id former = read();
    if (error_ != 0)
        return refused(error_, "what is there can't be read, because " + problem_);
    if (former && !isOwn_ && !isKeptByWriting(bytes_))
        return refused(ENOTSUP,
            "it holds a value that wouldn't outlive a write: an archiver's reference, an integer past 63 bits, or a "
            "text that isn't one");
    const id empty = kind_.root == PropertyListRoot::Array ? array(std::vector<id> {}) : dictionary({});
    const std::optional<id> wanted = change(former ? former : empty);
    if (!wanted)
        return {};
    auto bytes = dataFromPropertyList(*wanted, kind_.format);
    if (!bytes || !isOfKind(*wanted, kind_.root))
        return refusedValue(path_);
    WriteOutcome outcome;
    if (isDamaged_)
        if (const int error = setAside(outcome.setAside))
            return refused(error, "it is damaged, and can't be set aside: " + std::string(std::strerror(error)));
    if (const int error = writeFileAtomically(path_, *bytes, kind_.newFileMode)) {
        WriteOutcome failed = refused(error, std::strerror(error));
        failed.setAside = std::move(outcome.setAside);
        return failed;
    }
    bytes_ = std::move(*bytes);
    content_ = propertyListCopy(*wanted);
    isOwn_ = true;
    isDamaged_ = false;
    problem_.clear();
    return outcome;
}

WriteOutcome PropertyListFile::refused(int error, std::string_view why) const
{
    return { error, "can't write " + path_ + ": " + std::string(why) };
}

/// Gives the damaged file a second name, so that at every moment there is a file under the first.
int PropertyListFile::setAside(std::string& newPath) const
{
    const detail::Entry entry = detail::openEntry(path_);
    if (!entry.directory)
        return entry.error;
    const int directory = entry.directory.get();
    for (unsigned number = 1;; ++number) {
        const std::string suffix = ".damaged-" + std::to_string(number);
        const std::string name = entry.name + suffix;
        newPath = path_ + suffix;
        if (::linkat(directory, entry.name.c_str(), directory, name.c_str(), 0) == 0)
            return 0;
        // A writer that was killed behind this point has named it already.
        if (errno == EEXIST && isSameFile(directory, entry.name, name))
            return 0;
        // A file system without second names, or a file of somebody else's.
        if (errno != EEXIST
            && ::renameat2(directory, entry.name.c_str(), directory, name.c_str(), RENAME_NOREPLACE) == 0)
            return 0;
        if (errno != EEXIST)
            return errno;
    }
}

WriteOutcome changePropertyListFile(
    const std::string& path, const PropertyListFileKind& kind, const PropertyListChange& change)
{
    PropertyListFile file(path, kind);
    std::optional<FileLock> lock;
    WriteOutcome outcome = file.takeLock(lock);
    return lock ? file.change(*lock, change) : outcome;
}

} // namespace platform
