#include "platform/foundation/device_path.h"

#include "platform/foundation/files.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace platform {

namespace {

constexpr std::size_t longestComponent = 255;
constexpr int mostLinks = 40; ///< as many as the kernel follows
constexpr int mostAttempts = 64;

struct Root {
    detail::Descriptor directory;
    std::string hostPath;
    // A former root stays open: another thread may stand in it.
    const Root* former;
};

std::atomic<const Root*> presentRoot { nullptr };

bool isOneFolder(int one, int other)
{
    struct stat first { };
    struct stat second { };
    return ::fstat(one, &first) == 0 && ::fstat(other, &second) == 0 && first.st_dev == second.st_dev
        && first.st_ino == second.st_ino;
}

std::atomic<detail::KernelHelp> presentHelp { detail::KernelHelp::Asked };

/// An `errno` for a path that names nothing whatever is on the disk, else 0.
int pathError(std::string_view path) noexcept
{
    if (path.empty() || path.find('\0') != std::string_view::npos)
        return ENOENT;
    if (path.size() >= PATH_MAX)
        return ENAMETOOLONG;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (end - start > longestComponent)
            return ENAMETOOLONG;
        start = end + 1;
    }
    return 0;
}

detail::Opening opened(int descriptor)
{
    return { detail::Descriptor(descriptor), descriptor < 0 ? errno : 0 };
}

detail::Opening failed(int error)
{
    return { {}, error };
}

/// Resolves a path one component at a time. It holds each directory on the way, so that ".." is the one
/// that it came from, whatever is renamed meanwhile.
class Walk {
public:
    Walk(int root, std::string_view path)
        : root_(root)
        , remaining_(path)
    {
    }

    detail::Opening open(int flags)
    {
        for (;;) {
            remaining_.erase(0, std::min(remaining_.find_first_not_of('/'), remaining_.size()));
            if (remaining_.empty())
                return opened(::openat(here(), ".", flags));
            const std::string component = remaining_.substr(0, remaining_.find('/'));
            remaining_.erase(0, component.size());
            if (component == ".")
                continue;
            if (component == "..") {
                if (!directories_.empty())
                    directories_.pop_back();
                continue;
            }
            const int error = followLink(component);
            if (error == 0)
                continue;
            if (error != EINVAL)
                return failed(error);
            if (remaining_.empty())
                return opened(::openat(here(), component.c_str(), flags | O_NOFOLLOW));
            const int directory = ::openat(here(), component.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (directory < 0)
                return failed(errno);
            directories_.emplace_back(directory);
        }
    }

private:
    int here() const noexcept { return directories_.empty() ? root_ : directories_.back().get(); }

    /// 0 when the component was a link, whose target is what is to be resolved next; EINVAL when it isn't one.
    int followLink(const std::string& component)
    {
        std::array<char, PATH_MAX> target;
        const ssize_t length = ::readlinkat(here(), component.c_str(), target.data(), target.size());
        if (length < 0)
            return errno;
        if (++links_ > mostLinks)
            return ELOOP;
        if (target[0] == '/')
            directories_.clear();
        remaining_.insert(0, target.data(), static_cast<std::size_t>(length));
        return 0;
    }

    const int root_;
    std::string remaining_;
    std::vector<detail::Descriptor> directories_;
    int links_ = 0;
};

/// The kernel's resolution; ENOSYS when it has none to offer.
detail::Opening openInKernel(int root, const std::string& path, int flags)
{
    open_how how {};
    how.flags = static_cast<std::uint64_t>(flags);
    how.resolve = RESOLVE_IN_ROOT;
    // EAGAIN: something was renamed while the kernel stood in it.
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const long descriptor = ::syscall(SYS_openat2, root, path.c_str(), &how, sizeof how);
        if (descriptor >= 0 || errno != EAGAIN)
            return opened(static_cast<int>(descriptor));
    }
    return failed(ENOSYS);
}

} // namespace

namespace detail {

Opening openDevicePath(std::string_view path, int flags)
{
    const Root* const root = presentRoot.load(std::memory_order_acquire);
    if (!root)
        return failed(ENOENT);
    if (const int error = pathError(path))
        return failed(error);
    flags |= O_CLOEXEC;
    if (kernelHelp() == KernelHelp::Asked) {
        Opening opening = openInKernel(root->directory.get(), std::string(path), flags);
        // A sandbox that doesn't know the call answers EPERM.
        if (opening.error != ENOSYS && opening.error != EPERM)
            return opening;
    }
    return Walk(root->directory.get(), path).open(flags);
}

Entry openEntry(std::string_view path)
{
    Entry entry;
    entry.error = pathError(path);
    if (entry.error != 0)
        return entry;
    const std::size_t end = path.find_last_not_of('/') + 1;
    entry.endsWithSlash = end < path.size();
    path = path.substr(0, end);
    const std::size_t slash = path.rfind('/');
    entry.name = path.substr(slash == std::string_view::npos ? 0 : slash + 1);
    if (entry.name.empty() || entry.name == "." || entry.name == "..") {
        entry.error = EINVAL;
        return entry;
    }
    const std::string_view directory = slash == std::string_view::npos ? "/" : path.substr(0, slash + 1);
    Opening opening = openDevicePath(directory, O_PATH | O_DIRECTORY);
    entry.directory = std::move(opening.descriptor);
    entry.error = opening.error;
    return entry;
}

void setKernelHelp(KernelHelp help) noexcept
{
    presentHelp.store(help, std::memory_order_relaxed);
}

KernelHelp kernelHelp() noexcept
{
    return presentHelp.load(std::memory_order_relaxed);
}

} // namespace detail

bool setDeviceRoot(const std::string& directory)
{
    detail::Descriptor descriptor(::open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    std::error_code problem;
    std::string hostPath = std::filesystem::canonical(directory, problem);
    if (!descriptor || problem)
        return false;
    const Root* const former = presentRoot.load(std::memory_order_relaxed);
    if (former && former->hostPath == hostPath && isOneFolder(former->directory.get(), descriptor.get()))
        return true;
    presentRoot.store(new Root { std::move(descriptor), std::move(hostPath), former }, std::memory_order_release);
    return true;
}

std::string deviceRoot()
{
    const Root* const root = presentRoot.load(std::memory_order_acquire);
    return root ? root->hostPath : std::string();
}

} // namespace platform
