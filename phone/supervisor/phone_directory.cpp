#include "phone/supervisor/phone_directory.h"

#include "platform/foundation/directory_tree.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace phone {

namespace {

using platform::detail::Descriptor;

constexpr const char* runFolder = ".phone";
constexpr mode_t ownersAlone = 0700;

struct OpenDirectory {
    Descriptor descriptor; ///< none when there is a problem
    std::string problem;
    int error = 0;
};

/// What was opened, unless it belongs to somebody else or lets others write.
OpenDirectory checked(Descriptor directory, const std::string& path)
{
    struct stat status { };
    if (!directory || ::fstat(directory.get(), &status) != 0) {
        const int error = errno;
        if (error == ENOENT)
            return { {}, "there is no phone at " + path, error };
        return { {}, "can't open " + path + ": " + std::strerror(error), error };
    }
    if (status.st_uid != ::geteuid())
        return { {}, path + " belongs to another account: nothing there is used", EPERM };
    if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return { {}, "others may write in " + path + ": nothing there is used (chmod go-w)", EPERM };
    return { std::move(directory), {}, 0 };
}

OpenDirectory openRoot(const std::string& root)
{
    if (root.empty())
        return { {}, "there is no home directory for a phone; --root names one", ENOENT };
    return checked(Descriptor(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), root);
}

OpenDirectory openRunDirectory(const PhoneDirectory& phone)
{
    OpenDirectory root = openRoot(phone.root());
    if (!root.descriptor)
        return root;
    return checked(platform::detail::openDirectoryIn(root.descriptor.get(), runFolder), phone.runDirectory());
}

std::string cantMake(const std::string& path, int error)
{
    return "can't make " + path + ": " + std::strerror(error);
}

} // namespace

std::string PhoneDirectory::problem() const
{
    return openRoot(root_).problem;
}

std::string PhoneDirectory::make() const
{
    if (root_.empty())
        return problem();
    std::error_code failed;
    std::filesystem::create_directories(std::filesystem::path(root_).parent_path(), failed);
    if (failed)
        return cantMake(root_, failed.value());
    if (::mkdir(root_.c_str(), ownersAlone) != 0 && errno != EEXIST)
        return cantMake(root_, errno);
    return problem();
}

std::string PhoneDirectory::makeRunDirectory() const
{
    if (std::string failure = make(); !failure.empty())
        return failure;
    const OpenDirectory root = openRoot(root_);
    if (!root.descriptor)
        return root.problem;
    if (::mkdirat(root.descriptor.get(), runFolder, ownersAlone) != 0 && errno != EEXIST)
        return cantMake(runDirectory(), errno);
    const OpenDirectory run = openRunDirectory(*this);
    if (run.descriptor && ::fchmod(run.descriptor.get(), ownersAlone) != 0)
        return cantMake(runDirectory(), errno);
    return run.problem;
}

int PhoneDirectory::openRunFile(const char* name, int flags) const
{
    constexpr mode_t ownersFile = 0600;
    const OpenDirectory run = openRunDirectory(*this);
    if (!run.descriptor) {
        errno = run.error;
        return -1;
    }
    Descriptor file(::openat(run.descriptor.get(), name, flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, ownersFile));
    struct stat status { };
    if (!file || ::fstat(file.get(), &status) != 0)
        return -1;
    if (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid()) {
        errno = EPERM;
        return -1;
    }
    if ((status.st_mode & 07777) != ownersFile && ::fchmod(file.get(), ownersFile) != 0)
        return -1;
    return file.release();
}

int PhoneDirectory::replaceRunFile(const char* name, std::string_view content) const
{
    const OpenDirectory run = openRunDirectory(*this);
    if (!run.descriptor)
        return run.error;
    // One that a killed writer has left is written over: who replaces a file holds its lock.
    const std::string beside = std::string(".new-") + name;
    const Descriptor file(openRunFile(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC));
    if (!file)
        return errno;
    int error = 0;
    for (std::string_view rest = content; error == 0 && !rest.empty();) {
        const ssize_t written = ::write(file.get(), rest.data(), rest.size());
        if (written >= 0)
            rest.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            error = errno;
    }
    if (error == 0 && ::fdatasync(file.get()) != 0)
        error = errno;
    if (error == 0 && ::renameat(run.descriptor.get(), beside.c_str(), run.descriptor.get(), name) != 0)
        error = errno;
    if (error != 0)
        ::unlinkat(run.descriptor.get(), beside.c_str(), 0);
    return error;
}

int PhoneDirectory::renameRunFile(const char* name, const char* newName) const
{
    const OpenDirectory run = openRunDirectory(*this);
    if (!run.descriptor)
        return run.error;
    const int directory = run.descriptor.get();
    return ::renameat2(directory, name, directory, newName, RENAME_NOREPLACE) == 0 ? 0 : errno;
}

int PhoneDirectory::removeRunFile(const char* name) const
{
    const OpenDirectory run = openRunDirectory(*this);
    if (!run.descriptor)
        return run.error;
    return ::unlinkat(run.descriptor.get(), name, 0) == 0 || errno == ENOENT ? 0 : errno;
}

void PhoneDirectory::removeSocket() const
{
    const OpenDirectory run = openRunDirectory(*this);
    if (run.descriptor)
        ::unlinkat(run.descriptor.get(), "bus", 0);
}

int PhoneDirectory::supervisorProcess() const
{
    const Descriptor file(openLockFile(O_RDONLY));
    if (!file)
        return 0;
    struct flock lock { };
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    const bool isHeld = ::fcntl(file.get(), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    return isHeld ? lock.l_pid : 0;
}

} // namespace phone
