#include "phone/device/data_container.h"

#include "phone/device/containers.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

namespace phone {

using namespace platform;

namespace {

int makeContainer(const std::string& path, std::string_view owner, std::initializer_list<std::string_view> folders)
{
    for (const std::string_view folder : folders)
        if (const int error = createDirectories(path + std::string(folder)))
            return error;
    const std::string metadata = pathByAppending(path, containerMetadata);
    return fileExists(metadata)
        ? 0
        : writePropertyList(dictionary({ { containerOwnerKey, string(owner) } }), metadata, PropertyListFormat::Binary);
}

} // namespace

int makeDataContainer(const std::string& path, std::string_view bundleIdentifier)
{
    return makeContainer(path, bundleIdentifier, { "/Documents", "/Library/Caches", "/Library/Preferences", "/tmp" });
}

int makeGroupContainer(const std::string& path, std::string_view group)
{
    return makeContainer(path, group, { "/Library/Caches" });
}

} // namespace phone
