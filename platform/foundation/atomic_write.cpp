#include "platform/foundation/device_path.h"
#include "platform/foundation/files.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

using detail::Descriptor;
using detail::Entry;

/// A name that nobody uses for anything else; the process's number keeps processes apart.
std::string unusedName()
{
    static std::atomic<unsigned> last { 0 };
    return ".new-" + std::to_string(::getpid()) + "-" + std::to_string(++last);
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

/// The new content in a file beside the old one: nameless as long as that is possible, so that a process
/// which is killed leaves nothing behind. Removed again unless it takes the old one's place.
class Replacement {
public:
    explicit Replacement(const Entry& entry)
        : entry_(entry)
    {
        if (detail::kernelHelp() == detail::KernelHelp::Asked)
            file_ = Descriptor(::openat(entry.directory.get(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
        if (!file_)
            openNamed();
    }

    ~Replacement()
    {
        if (!name_.empty())
            ::unlinkat(entry_.directory.get(), name_.c_str(), 0);
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
            file_ = Descriptor(::openat(
                entry_.directory.get(), name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
            error_ = file_ ? 0 : errno;
        } while (error_ == EEXIST);
        if (error_ != 0)
            name_.clear();
    }

    bool linkNamed()
    {
        const std::string self = "/proc/self/fd/" + std::to_string(file_.get());
        do {
            name_ = unusedName();
            if (::linkat(AT_FDCWD, self.c_str(), entry_.directory.get(), name_.c_str(), AT_SYMLINK_FOLLOW) == 0)
                return true;
        } while (errno == EEXIST);
        name_.clear();
        return false;
    }

    int takePlace()
    {
        const int directory = entry_.directory.get();
        // Some file systems tell only now that the content didn't arrive.
        if (::close(file_.release()) != 0)
            return errno;
        if (::renameat(directory, name_.c_str(), directory, entry_.name.c_str()) != 0)
            return errno;
        name_.clear();
        return 0;
    }

    const Entry& entry_;
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
    return Replacement(entry).write(content, mode & 07777);
}

} // namespace platform
