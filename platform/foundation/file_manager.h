#pragma once

#include "platform/runtime/class_definition.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/object.h"

#include <memory>

/// NSFileManager's work on directories. Every URL is one of a device file; the calls block on the disk and may be made
/// from any thread.

namespace platform {

namespace detail {
class DirectoryWalk;
}

/// How a directory is enumerated.
enum class DirectoryEnumerationOptions : unsigned long { None = 0, SkipsSubdirectoryDescendants = 1 };

/// The entries of a directory and, unless they are skipped, of those in it, each directory as it stood when the walk
/// came to it: hidden ones included, in no particular order, a directory before what is in it. No link is followed. It
/// holds the directories open where it stands, and every URL that it gives holds its own: what is done to such a URL
/// is done in that directory, even when another lies under its name by then. However deep the tree, it takes a few
/// dozen descriptors.
class NSDirectoryEnumerator final : public NSObject {
public:
    static const ClassDefinition definition;
    explicit NSDirectoryEnumerator(std::unique_ptr<detail::DirectoryWalk> walk);
    ~NSDirectoryEnumerator() override;

    id nextObject(); ///< a URL; nil after the last

private:
    const std::unique_ptr<detail::DirectoryWalk> walk_;
};

class NSFileManager final : public NSObject {
public:
    static const ClassDefinition definition;
    static id defaultManager();

    /// `enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:`. The handler is a block of a URL and an
    /// NSError that gives whether to go on without that directory; without one the walk goes on. Nil for a directory
    /// that can't be opened when there is no handler (else it is told at the first request), and for options other than
    /// those above. Properties are read when they are asked for, whatever the keys.
    id enumeratorAtURL(const id& url, const id& propertyKeys, NSUInteger options, const id& errorHandler) const;

    /// `removeItemAtURL:error:`. Removes a file, a link (not what it leads to) or a whole directory, in which it
    /// follows no link either. What can't be removed is passed over and the rest goes: false then, and `error`, if
    /// it isn't null, gets an NSError of the domain NSPOSIXErrorDomain.
    bool removeItemAtURL(const id& url, id* error) const;

    /// Whether there is something at that device path, links followed.
    bool fileExistsAtPath(const id& path) const;

    /// `createDirectoryAtURL:withIntermediateDirectories:attributes:error:`. A directory that is there already is a
    /// success if those above it are made where they are missing. Attributes are passed over.
    bool createDirectoryAtURL(const id& url, bool withIntermediates, const id& attributes, id* error) const;
};

} // namespace platform
