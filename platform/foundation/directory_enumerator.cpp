#include "platform/foundation/block.h"
#include "platform/foundation/directory_tree.h"
#include "platform/foundation/error.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_url.h"
#include "platform/runtime/message.h"

#include <cerrno>
#include <vector>

namespace platform {

namespace detail {

/// A walk from a directory to all that is in it. Of a deep tree the lowest directories are open, and the others are
/// found again through "..", if that still leads to them.
class DirectoryWalk {
public:
    enum class Reach { Top, Everything };

    DirectoryWalk(const id& url, FilePlace top, Opening opening, Reach reach, id errorHandler)
        : reach_(reach)
        , errorHandler_(std::move(errorHandler))
        , top_(url)
        , failure_(opening.error)
    {
        if (opening.descriptor)
            enter(std::move(opening.descriptor), std::make_shared<const WalkedPath>(WalkedPath { std::move(top) }));
    }

    id next()
    {
        if (const int error = std::exchange(failure_, 0))
            goesOnWithout(top_, error);
        if (std::exchange(mayGoBelow_, false) && !enterBelow())
            levels_.clear();
        while (!levels_.empty()) {
            Level& level = levels_.back();
            if (level.entries.empty()) {
                if (!leave())
                    levels_.clear();
                continue;
            }
            const EntryKind kind = level.entries.kind();
            setUrlOfEntry(given_, level.directory, level.entries.name(), kind);
            level.entries.advance();
            mayGoBelow_ = reach_ == Reach::Everything && mayBeDirectory(kind);
            return given_;
        }
        return nil;
    }

private:
    struct Level {
        std::shared_ptr<const WalkedDirectory> directory; ///< null when it is closed for a time
        std::shared_ptr<const WalkedPath> path;
        DirectoryListing entries;
        DirectoryIdentity identity {}; ///< of one that is closed
    };

    static constexpr std::size_t mostOpen = 32;

    bool goesOnWithout(const id& url, int error)
    {
        return !errorHandler_ || callBlock<bool>(errorHandler_, url, platform::error("NSPOSIXErrorDomain", error));
    }

    /// Goes into what was given last, if it is a directory. False when the walk is to end.
    bool enterBelow()
    {
        const id url = given_;
        const WalkedEntry entry = *walkedEntry(url);
        Descriptor directory = openDirectoryIn(entry.directory->descriptor.get(), entry.name.c_str());
        if (directory) {
            const int error = enter(std::move(directory),
                std::make_shared<const WalkedPath>(WalkedPath { {}, entry.directory->path, entry.name }));
            return error == 0 || goesOnWithout(url, error);
        }
        // It may have gone, or have been no directory.
        const int error = errno;
        return error == ENOENT || error == ENOTDIR || error == ELOOP || goesOnWithout(url, error);
    }

    /// 0, or the `errno` of what kept it from being read whole.
    int enter(Descriptor directory, std::shared_ptr<const WalkedPath> path)
    {
        if (levels_.size() >= mostOpen) {
            Level& farthest = levels_[levels_.size() - mostOpen];
            if (farthest.directory)
                farthest.identity = identityOf(farthest.directory->descriptor.get());
            farthest.directory = nullptr;
        }
        using enum DirectoryListing::Order;
        DirectoryListing entries(directory.get(), reach_ == Reach::Top ? OfDisk : AsRead); // the top's are removed
        const int error = entries.error();
        auto walked = std::make_shared<const WalkedDirectory>(WalkedDirectory { std::move(directory), path });
        levels_.push_back({ std::move(walked), std::move(path), std::move(entries) });
        return error;
    }

    /// False when the way back was lost, because a directory on it was moved, and the walk is to end for that.
    bool leave()
    {
        const Level left = std::move(levels_.back());
        levels_.pop_back();
        if (levels_.empty() || levels_.back().directory)
            return true;
        Level& above = levels_.back();
        Descriptor directory = openDirectoryIn(left.directory->descriptor.get(), "..");
        if (!directory || identityOf(directory.get()) != above.identity) {
            goesOnWithout(top_, ELOOP);
            return false;
        }
        above.directory = std::make_shared<const WalkedDirectory>(WalkedDirectory { std::move(directory), above.path });
        return true;
    }

    const Reach reach_;
    const id errorHandler_;
    const id top_;
    int failure_; ///< why the top couldn't be opened, while nobody has been told yet
    id given_; ///< the URL that was given last
    bool mayGoBelow_ = false; ///< it may be a directory to go into
    std::vector<Level> levels_;
};

} // namespace detail

namespace {

constexpr MethodDefinition methods[] {
    method<"nextObject", &NSDirectoryEnumerator::nextObject>(),
};

} // namespace

const ClassDefinition NSDirectoryEnumerator::definition { .name = "NSDirectoryEnumerator", .methods = methods };

NSDirectoryEnumerator::NSDirectoryEnumerator(std::unique_ptr<detail::DirectoryWalk> walk)
    : walk_(std::move(walk))
{
}

NSDirectoryEnumerator::~NSDirectoryEnumerator() = default;

id NSDirectoryEnumerator::nextObject()
{
    return walk_->next();
}

id NSFileManager::enumeratorAtURL(const id& url, const id&, NSUInteger options, const id& errorHandler) const
{
    using Reach = detail::DirectoryWalk::Reach;
    const auto chosen = static_cast<DirectoryEnumerationOptions>(options);
    const bool isTopAlone = chosen == DirectoryEnumerationOptions::SkipsSubdirectoryDescendants;
    if (!isTopAlone && chosen != DirectoryEnumerationOptions::None)
        return nil;
    auto place = detail::filePlace(url);
    if (!place)
        return nil;
    detail::Opening opening = openPlace(*place);
    if (!opening.descriptor && !errorHandler)
        return nil;
    return make<NSDirectoryEnumerator>(std::make_unique<detail::DirectoryWalk>(
        url, std::move(*place), std::move(opening), isTopAlone ? Reach::Top : Reach::Everything, errorHandler));
}

} // namespace platform
