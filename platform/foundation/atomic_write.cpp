#include "platform/foundation/device_path.h"
#include "platform/foundation/directory_tree.h"
#include "platform/foundation/files.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

using detail::Descriptor;
using detail::Entry;

constexpr std::string_view newFilePrefix = ".new-";

/// A name that nobody uses for anything else; the process's number keeps processes apart.
std::string unusedName()
{
    static std::atomic<unsigned> last { 0 };
    return std::string(newFilePrefix) + std::to_string(::getpid()) + "-" + std::to_string(++last);
}

int writeAll(int descriptor, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t count = ::write(descriptor, content.data(), content.size());
        if (count >= 0)
            content.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

bool isSameFile(int descriptor, int directory, const char* name)
{
    struct stat open { };
    struct stat named { };
    return ::fstat(descriptor, &open) == 0 && ::fstatat(directory, name, &named, AT_SYMLINK_NOFOLLOW) == 0
        && open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

/// Removes what killed writers have left. A writer holds a lock on its new file as long as it lives, whatever its
/// process is numbered here.
void removeLitter(int directory)
{
    const Descriptor readable = detail::openDirectoryIn(directory, ".");
    if (!readable)
        return;
    for (detail::DirectoryListing entries(readable.get()); !entries.empty(); entries.advance()) {
        const char* const name = entries.name();
        if (!std::string_view(name).starts_with(newFilePrefix) || entries.kind() == detail::EntryKind::Directory)
            continue;
        const Descriptor left(::openat(directory, name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        if (left && ::flock(left.get(), LOCK_EX | LOCK_NB) == 0 && isSameFile(left.get(), directory, name))
            ::unlinkat(directory, name, 0);
    }
}

/// The new content in a file beside the old one: nameless as long as that is possible, so that a process
/// which is killed leaves nothing behind but in the last moment. Removed again unless it takes the old one's place.
class Replacement {
public:
    Replacement(int directory, std::string target)
        : directory_(directory)
        , target_(std::move(target))
    {
        if (detail::kernelHelp() == detail::KernelHelp::Asked)
            file_ = Descriptor(::openat(directory_, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
        if (file_)
            lock();
        else
            openNamed();
    }

    ~Replacement()
    {
        if (!name_.empty())
            ::unlinkat(directory_, name_.c_str(), 0);
    }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    int write(std::string_view content, mode_t mode)
    {
        if (!file_)
            return error_;
        if (const int error = writeAll(file_.get(), content))
            return error;
        if (::fchmod(file_.get(), mode) != 0)
            return errno;
        if (!name_.empty() || linkNamed())
            return takePlace();
        // The system has no /proc to name the file by.
        openNamed();
        return name_.empty() ? error_ : write(content, mode);
    }

private:
    void openNamed()
    {
        do {
            name_ = unusedName();
            file_ = Descriptor(
                ::openat(directory_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
            error_ = file_ ? 0 : errno;
            if (file_)
                lock();
            // Before it was locked, another writer may have taken it for litter.
        } while (error_ == EEXIST || (file_ && !isSameFile(file_.get(), directory_, name_.c_str())));
        if (error_ != 0)
            name_.clear();
    }

    void lock() const { ::flock(file_.get(), LOCK_EX); }

    bool linkNamed()
    {
        const std::string self = "/proc/self/fd/" + std::to_string(file_.get());
        do {
            name_ = unusedName();
            if (::linkat(AT_FDCWD, self.c_str(), directory_, name_.c_str(), AT_SYMLINK_FOLLOW) == 0)
                return true;
        } while (errno == EEXIST);
        name_.clear();
        return false;
    }

    int takePlace()
    {
        // Holds the lock until the name has gone.
        const Descriptor holder(::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0));
        // Some file systems tell only now that the content didn't arrive.
        if (::close(file_.release()) != 0)
            return errno;
        if (::renameat(directory_, name_.c_str(), directory_, target_.c_str()) != 0)
            return errno;
        name_.clear();
        return 0;
    }

    const int directory_;
    const std::string target_;
    Descriptor file_;
    std::string name_;
    int error_ = 0;
};

} // namespace

int writeFileAtomically(std::string_view path, std::string_view content, unsigned mode)
{
    const Entry entry = detail::openEntry(path);
    if (!entry.directory)
        return entry.error;
    struct stat former;
    if (::fstatat(entry.directory.get(), entry.name.c_str(), &former, AT_SYMLINK_NOFOLLOW) == 0) {
        if (S_ISDIR(former.st_mode))
            return EISDIR;
        if (S_ISREG(former.st_mode))
            mode = former.st_mode & 07777;
    }
    if (entry.endsWithSlash)
        return EISDIR;
    removeLitter(entry.directory.get());
    return Replacement(entry.directory.get(), entry.name).write(content, mode & 07777);
}

int writeHostFileAtomically(const std::string& path, std::string_view content, unsigned mode)
{
    namespace fs = std::filesystem;
    struct stat former;
    const bool isThere = ::stat(path.c_str(), &former) == 0;
    if (isThere && !S_ISREG(former.st_mode)) {
        const Descriptor file(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
        return file ? writeAll(file.get(), content) : errno;
    }
    std::error_code failed;
    const fs::path target = isThere ? fs::canonical(path, failed) : fs::path(path);
    if (failed)
        return failed.value();
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const Descriptor directory(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!directory)
        return errno;
    return target.has_filename()
        ? Replacement(directory.get(), target.filename()).write(content, (isThere ? former.st_mode : mode) & 07777)
        : EISDIR;
}

} // namespace platform
