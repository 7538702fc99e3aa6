#include "platform/foundation/error.h"
#include "platform/foundation/file_url.h"
#include "platform/foundation/values.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace platform::detail {

namespace {

/// 0, or an `errno`. Of a link it is the link's own.
int statusIn(int directory, const std::string& name, struct stat& status)
{
    return ::fstatat(directory, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

int statusOf(const id& url, struct stat& status)
{
    if (const WalkedEntry* const entry = walkedEntry(url))
        return statusIn(entry->directory->descriptor.get(), entry->name, status);
    const auto place = filePlace(url);
    if (!place)
        return EINVAL;
    const Entry entry = openParent(*place);
    return entry.directory ? statusIn(entry.directory.get(), entry.name, status) : entry.error;
}

int isRegularFile(const id& url, id& value)
{
    const WalkedEntry* const entry = walkedEntry(url);
    EntryKind kind = entry ? entry->kind : EntryKind::Unknown;
    if (kind == EntryKind::Unknown) {
        struct stat status;
        if (const int error = statusOf(url, status))
            return error;
        kind = S_ISREG(status.st_mode) ? EntryKind::Regular : EntryKind::Other;
    }
    value = boolean(kind == EntryKind::Regular);
    return 0;
}

int allocatedSize(const id& url, id& value)
{
    constexpr std::int64_t unit = 512; // of st_blocks, whatever the file system's blocks are
    struct stat status;
    if (const int error = statusOf(url, status))
        return error;
    if (!S_ISDIR(status.st_mode))
        value = number(static_cast<std::int64_t>(status.st_blocks) * unit);
    return 0;
}

struct Resource {
    std::string_view key;
    int (*read)(const id& url, id& value); ///< 0, or an `errno`; a value that there isn't stays nil
};

constexpr Resource resources[] {
    { "NSURLIsRegularFileKey", isRegularFile },
    { "NSURLTotalFileAllocatedSizeKey", allocatedSize },
    { "NSURLFileAllocatedSizeKey", allocatedSize },
};

} // namespace

bool getResourceValue(const id& url, SEL, id* value, const id& key, id* error)
{
    id found;
    int failed = 0;
    if (const auto name = asString(key))
        for (const Resource& resource : resources)
            if (*name == resource.key)
                failed = resource.read(url, found);
    if (value)
        *value = found;
    if (failed != 0 && error)
        *error = platform::error("NSPOSIXErrorDomain", failed);
    return failed == 0;
}

} // namespace platform::detail
