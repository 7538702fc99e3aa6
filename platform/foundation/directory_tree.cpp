#include "platform/foundation/directory_tree.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace platform::detail {

namespace {

constexpr int directoryFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// As the kernel's getdents64 writes it.
struct KernelEntry {
    std::uint64_t inode;
    std::int64_t offset;
    unsigned short length;
    unsigned char type;
    char name[1];
};

EntryKind kindOf(unsigned char type) noexcept
{
    if (type == DT_UNKNOWN)
        return EntryKind::Unknown;
    if (type == DT_DIR)
        return EntryKind::Directory;
    return type == DT_REG ? EntryKind::Regular : EntryKind::Other;
}

bool isDots(const char* name) noexcept
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

/// 0, or the `errno`; what isn't there any more was removed.
int unlinkIn(int directory, const char* name, int flags) noexcept
{
    return ::unlinkat(directory, name, flags) == 0 || errno == ENOENT ? 0 : errno;
}

/// One walk down a tree and up again. The directories on the way from the top are open as far as they are few: of
/// a deep tree the lowest, and the others are found again through "..", if that still leads to them.
class Removal {
public:
    explicit Removal(int directory)
        : top_(directory)
    {
    }

    /// False when the way back was lost, because a directory on it was moved.
    bool remove(const char* name, EntryKind kind)
    {
        visit(name, kind);
        while (!levels_.empty()) {
            Level& level = levels_.back();
            if (level.entries.empty()) {
                if (!leave())
                    return false;
                continue;
            }
            const char* const entry = level.entries.name();
            const EntryKind entryKind = level.entries.kind();
            level.entries.advance();
            visit(entry, entryKind);
        }
        return true;
    }

    int error() const noexcept { return error_; }

private:
    struct Level {
        std::string name; ///< in the directory above
        Descriptor directory;
        DirectoryListing entries;
        DirectoryIdentity identity {}; ///< once its descriptor has been closed
    };

    static constexpr std::size_t mostOpen = 32;

    int here() const noexcept { return levels_.empty() ? top_ : levels_.back().directory.get(); }

    void note(int error) noexcept
    {
        if (error_ == 0)
            error_ = error;
    }

    /// Removes an entry of the directory where the walk stands, or goes into it.
    void visit(const char* name, EntryKind kind)
    {
        if (kind != EntryKind::Directory) {
            const int error = unlinkIn(here(), name, 0);
            if (error == 0)
                return;
            if (error != EISDIR)
                return note(error);
        }
        if (Descriptor directory = openDirectoryIn(here(), name)) {
            enter(name, std::move(directory));
        } else if (const int error = errno; error == ENOTDIR || error == ELOOP) {
            // It has become something else since the directory was read.
            if (const int second = unlinkIn(here(), name, 0))
                note(second);
        } else if (error != ENOENT && unlinkIn(here(), name, AT_REMOVEDIR) != 0) {
            note(error);
        }
    }

    void enter(const char* name, Descriptor directory)
    {
        if (levels_.size() >= mostOpen) {
            Level& farthest = levels_[levels_.size() - mostOpen];
            if (farthest.directory) {
                farthest.identity = identityOf(farthest.directory.get());
                farthest.directory = Descriptor();
            }
        }
        DirectoryListing entries(directory.get());
        levels_.push_back({ name, std::move(directory), std::move(entries) });
    }

    bool leave()
    {
        const Level left = std::move(levels_.back());
        levels_.pop_back();
        if (!levels_.empty() && !levels_.back().directory) {
            Level& above = levels_.back();
            above.directory = openDirectoryIn(left.directory.get(), "..");
            if (!above.directory || identityOf(above.directory.get()) != above.identity) {
                note(ELOOP);
                return false;
            }
        }
        int error = unlinkIn(here(), left.name.c_str(), AT_REMOVEDIR);
        if (error == ENOTDIR)
            error = unlinkIn(here(), left.name.c_str(), 0);
        if (error != 0)
            note(error);
        return true;
    }

    const int top_;
    std::vector<Level> levels_;
    int error_ = 0;
};

} // namespace

DirectoryListing::DirectoryListing(int directory, Order order)
{
    alignas(KernelEntry) std::array<char, 64 * 1024> buffer;
    for (;;) {
        const long length = ::syscall(SYS_getdents64, directory, buffer.data(), buffer.size());
        if (length <= 0) {
            error_ = length < 0 ? errno : 0;
            break;
        }
        for (long position = 0; position < length;) {
            const auto* const entry = reinterpret_cast<const KernelEntry*>(buffer.data() + position);
            const char* const name = buffer.data() + position + offsetof(KernelEntry, name);
            position += entry->length;
            if (isDots(name))
                continue;
            items_.push_back({ entry->inode, static_cast<std::uint32_t>(names_.size()), kindOf(entry->type) });
            names_.append(name, std::strlen(name) + 1);
        }
    }
    if (order == Order::OfDisk)
        std::ranges::sort(items_, {}, &Item::inode);
}

DirectoryIdentity identityOf(int descriptor) noexcept
{
    struct stat status { };
    return ::fstat(descriptor, &status) == 0 ? DirectoryIdentity { status.st_dev, status.st_ino }
                                             : DirectoryIdentity {};
}

Descriptor openDirectoryIn(int directory, const char* name)
{
    return Descriptor(::openat(directory, name, directoryFlags));
}

int removeTree(int directory, const char* name, EntryKind kind)
{
    // Whoever moves directories about can make a walk lose its way, but not for ever.
    constexpr int mostWalks = 8;
    int error = 0;
    for (int walk = 0; walk < mostWalks; ++walk) {
        Removal removal(directory);
        const bool finished = removal.remove(name, kind);
        error = removal.error();
        if (finished)
            break;
        kind = EntryKind::Unknown;
    }
    return error;
}

} // namespace platform::detail
