#pragma once

#include "platform/foundation/descriptor.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Directories by descriptors: reading one, and removing whole trees without following a link.

namespace platform::detail {

/// What a directory says of an entry; who acts on it must be ready for it to have changed.
enum class EntryKind : unsigned char { Unknown, Directory, Regular, Other };

inline bool mayBeDirectory(EntryKind kind) noexcept
{
    return kind == EntryKind::Directory || kind == EntryKind::Unknown;
}

/// The names in a directory as they stood at one moment, but for "." and "..", in the order in which the disk
/// likes them to be visited, or in that in which the directory has them.
class DirectoryListing {
public:
    enum class Order { OfDisk, AsRead };

    /// Of a directory that is open for reading, from its beginning. What can't be read is left out.
    explicit DirectoryListing(int directory, Order order = Order::OfDisk);
    DirectoryListing() = default;

    struct Item {
        std::uint64_t inode;
        std::uint32_t offset;
        EntryKind kind;
    };

    /// 0, or the `errno` of what kept the rest from being read.
    int error() const noexcept { return error_; }

    bool empty() const noexcept { return next_ == items_.size(); }

    /// The next one; its name ends with a NUL and stays where it is as long as the listing.
    EntryKind kind() const noexcept { return items_[next_].kind; }
    const char* name() const noexcept { return names_.data() + items_[next_].offset; }
    void advance() noexcept { ++next_; }

private:
    std::vector<Item> items_;
    std::string names_;
    std::size_t next_ = 0;
    int error_ = 0;
};

/// What tells an open directory from every other; that of what can't be looked at is no directory's.
struct DirectoryIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    friend bool operator==(const DirectoryIdentity&, const DirectoryIdentity&) = default;
};
DirectoryIdentity identityOf(int descriptor) noexcept;

/// Opens a directory that lies in another one, for reading; not through a link. Invalid, with `errno` set, when it
/// can't be.
Descriptor openDirectoryIn(int directory, const char* name);

/// Removes the entry of that directory, and if it is a directory, all that is in it. Links are removed and never
/// followed; a directory that somebody exchanges for a link meanwhile leads nowhere. What can't be removed is passed
/// over, and the rest goes. 0 when everything went or was gone already, else the `errno` of the first that stayed.
/// Takes a few dozen descriptors at most, however deep the tree.
int removeTree(int directory, const char* name, EntryKind kind);

} // namespace platform::detail
