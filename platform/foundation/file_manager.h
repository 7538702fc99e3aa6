#pragma once

#include "platform/runtime/class_definition.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/object.h"

#include <memory>

/// NSFileManager's work on directories. Every URL is one of a device file; the calls block on the disk and may be made
/// from any thread.

namespace platform {

namespace detail {
class DirectoryListing;
struct WalkedDirectory;
}

/// How a directory is enumerated.
enum class DirectoryEnumerationOptions : unsigned long { SkipsSubdirectoryDescendants = 1 };

/// The entries of a directory as they stood when it was made, hidden ones included, in no particular order. It
/// holds the directory open, and so does every URL that it gives: what is done to such a URL is done in that
/// directory, even when another lies under its name by then.
class NSDirectoryEnumerator final : public NSObject {
public:
    static const ClassDefinition definition;
    NSDirectoryEnumerator(
        std::shared_ptr<const detail::WalkedDirectory> directory, std::unique_ptr<detail::DirectoryListing> entries);
    ~NSDirectoryEnumerator() override;

    id nextObject(); ///< a URL; nil after the last

private:
    const std::shared_ptr<const detail::WalkedDirectory> directory_;
    const std::unique_ptr<detail::DirectoryListing> entries_;
};

class NSFileManager final : public NSObject {
public:
    static const ClassDefinition definition;
    static id defaultManager();

    /// `enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:`. Nil when there is no directory, and for
    /// options other than SkipsSubdirectoryDescendants alone: only the top level can be walked. Properties are
    /// neither fetched ahead nor missed, and nothing is left to an error handler.
    id enumeratorAtURL(const id& url, const id& propertyKeys, NSUInteger options, const id& errorHandler) const;

    /// `removeItemAtURL:error:`. Removes a file, a link (not what it leads to) or a whole directory, in which it
    /// follows no link either. What can't be removed is passed over and the rest goes: false then, and `error`, if
    /// it isn't null, gets an NSError of the domain NSPOSIXErrorDomain.
    bool removeItemAtURL(const id& url, id* error) const;
};

} // namespace platform
