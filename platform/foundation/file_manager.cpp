#include "platform/foundation/file_manager.h"

#include "platform/foundation/device_path.h"
#include "platform/foundation/directory_tree.h"
#include "platform/foundation/error.h"
#include "platform/foundation/file_url.h"
#include "platform/foundation/values.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

/// The next component of what is left of a path, which it is taken from; "" at its end.
std::string takeComponent(std::string_view& path)
{
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    const std::string component(path.substr(0, path.find('/')));
    path.remove_prefix(component.size());
    return component;
}

/// Opens a directory as its place says: links are followed down to the anchor, and not below it.
detail::Opening openPlace(const detail::FilePlace& place)
{
    detail::Opening opening = detail::openDevicePath(place.anchor, O_RDONLY | O_DIRECTORY);
    std::string_view below = place.below;
    for (std::string component = takeComponent(below); opening.descriptor && !component.empty();
         component = takeComponent(below)) {
        if (component == "..")
            return { {}, EINVAL };
        opening.descriptor = detail::openDirectoryIn(opening.descriptor.get(), component.c_str());
        opening.error = opening.descriptor ? 0 : errno;
    }
    return opening;
}

/// The directory that holds the last component of a place, and that component.
detail::Entry openParent(const detail::FilePlace& place)
{
    const std::size_t end = place.below.find_last_not_of('/');
    if (end == std::string::npos)
        return detail::openEntry(place.anchor);
    detail::Entry entry;
    const std::string below = place.below.substr(0, end + 1);
    const std::size_t slash = below.rfind('/');
    entry.name = below.substr(slash == std::string::npos ? 0 : slash + 1);
    if (entry.name == "." || entry.name == "..") {
        entry.error = EINVAL;
        return entry;
    }
    detail::Opening opening
        = openPlace({ place.anchor, slash == std::string::npos ? std::string() : below.substr(0, slash) });
    entry.directory = std::move(opening.descriptor);
    entry.error = opening.error;
    return entry;
}

int removeAt(const id& url)
{
    if (const detail::WalkedEntry* const entry = detail::walkedEntry(url))
        return detail::removeTree(entry->directory->descriptor.get(), entry->name.c_str(), entry->kind);
    const auto place = detail::filePlace(url);
    if (!place)
        return EINVAL;
    const detail::Entry entry = openParent(*place);
    if (!entry.directory)
        return entry.error;
    if (::faccessat(entry.directory.get(), entry.name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    return detail::removeTree(entry.directory.get(), entry.name.c_str(), detail::EntryKind::Unknown);
}

id NSFileManager_defaultManager(const id&, SEL)
{
    return NSFileManager::defaultManager();
}

constexpr MethodDefinition enumeratorMethods[] {
    method<"nextObject", &NSDirectoryEnumerator::nextObject>(),
};

constexpr MethodDefinition managerMethods[] {
    classMethod<"defaultManager", &NSFileManager_defaultManager>(),
    method<"enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:", &NSFileManager::enumeratorAtURL>(),
    method<"removeItemAtURL:error:", &NSFileManager::removeItemAtURL>(),
};

} // namespace

const ClassDefinition NSDirectoryEnumerator::definition { .name = "NSDirectoryEnumerator",
    .methods = enumeratorMethods };
const ClassDefinition NSFileManager::definition {
    .name = "NSFileManager", .allocate = allocate<NSFileManager>, .methods = managerMethods
};

NSDirectoryEnumerator::NSDirectoryEnumerator(
    std::shared_ptr<const detail::WalkedDirectory> directory, std::unique_ptr<detail::DirectoryListing> entries)
    : directory_(std::move(directory))
    , entries_(std::move(entries))
{
}

NSDirectoryEnumerator::~NSDirectoryEnumerator() = default;

id NSDirectoryEnumerator::nextObject()
{
    if (entries_->empty())
        return nil;
    id url = detail::urlOfEntry({ directory_, entries_->name(), entries_->kind() });
    entries_->advance();
    return url;
}

id NSFileManager::defaultManager()
{
    static NSObject* const manager = make<NSFileManager>().leak();
    return manager;
}

id NSFileManager::enumeratorAtURL(const id& url, const id&, NSUInteger options, const id&) const
{
    if (options != static_cast<NSUInteger>(DirectoryEnumerationOptions::SkipsSubdirectoryDescendants))
        return nil;
    auto place = detail::filePlace(url);
    if (!place)
        return nil;
    detail::Opening opening = openPlace(*place);
    if (!opening.descriptor)
        return nil;
    auto entries = std::make_unique<detail::DirectoryListing>(opening.descriptor.get());
    return make<NSDirectoryEnumerator>(std::make_shared<const detail::WalkedDirectory>(
                                           detail::WalkedDirectory { std::move(opening.descriptor), *place }),
        std::move(entries));
}

bool NSFileManager::removeItemAtURL(const id& url, id* error) const
{
    const int failed = removeAt(url);
    if (failed != 0 && error)
        *error = platform::error("NSPOSIXErrorDomain", failed);
    return failed == 0;
}

} // namespace platform
