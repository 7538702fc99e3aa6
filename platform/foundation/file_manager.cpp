#include "platform/foundation/file_manager.h"

#include "platform/foundation/device_path.h"
#include "platform/foundation/directory_tree.h"
#include "platform/foundation/error.h"
#include "platform/foundation/file_url.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

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

/// Makes the directories of a place that are missing. 0, or an `errno`.
int makeDirectories(const detail::FilePlace& place, bool withIntermediates)
{
    if (withIntermediates && detail::openPlace(place).descriptor)
        return 0;
    const detail::Entry entry = openParent(place);
    if (!entry.directory) {
        const std::string above = pathByDeletingLastComponent(place.below);
        if (!withIntermediates || entry.error != ENOENT || above.empty())
            return entry.error;
        if (const int error = makeDirectories({ place.anchor, above }, true))
            return error;
        return makeDirectories(place, false);
    }
    return ::mkdirat(entry.directory.get(), entry.name.c_str(), 0755) == 0 ? 0 : errno;
}

bool succeeded(int error, id* told)
{
    if (error != 0 && told)
        *told = platform::error("NSPOSIXErrorDomain", error);
    return error == 0;
}

constexpr MethodDefinition managerMethods[] {
    method<"createDirectoryAtURL:withIntermediateDirectories:attributes:error:",
        &NSFileManager::createDirectoryAtURL>(),
    classMethod<"defaultManager", &NSFileManager_defaultManager>(),
    method<"enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:", &NSFileManager::enumeratorAtURL>(),
    method<"fileExistsAtPath:", &NSFileManager::fileExistsAtPath>(),
    method<"removeItemAtURL:error:", &NSFileManager::removeItemAtURL>(),
};

} // namespace

const ClassDefinition NSFileManager::definition {
    .name = "NSFileManager", .allocate = allocate<NSFileManager>, .methods = managerMethods
};

id NSFileManager::defaultManager()
{
    static NSObject* const manager = make<NSFileManager>().leak();
    return manager;
}

bool NSFileManager::removeItemAtURL(const id& url, id* error) const
{
    return succeeded(removeAt(url), error);
}

bool NSFileManager::fileExistsAtPath(const id& path) const
{
    const auto text = asString(path);
    return text && fileExists(*text);
}

bool NSFileManager::createDirectoryAtURL(const id& url, bool withIntermediates, const id&, id* error) const
{
    const auto place = detail::filePlace(url);
    return succeeded(place ? makeDirectories(*place, withIntermediates) : EINVAL, error);
}

} // namespace platform
