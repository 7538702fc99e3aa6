#include "platform/foundation/device_path.h"
#include "platform/foundation/file_url.h"

#include <cerrno>
#include <fcntl.h>

namespace platform::detail {

namespace {

/// The next component of what is left of a path, which it is taken from; "" at its end.
std::string takeComponent(std::string_view& path)
{
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    const std::string component(path.substr(0, path.find('/')));
    path.remove_prefix(component.size());
    return component;
}

} // namespace

Opening openPlace(const FilePlace& place)
{
    Opening opening = openDevicePath(place.anchor, O_RDONLY | O_DIRECTORY);
    std::string_view below = place.below;
    for (std::string component = takeComponent(below); opening.descriptor && !component.empty();
         component = takeComponent(below)) {
        if (component == "..")
            return { {}, EINVAL };
        opening.descriptor = openDirectoryIn(opening.descriptor.get(), component.c_str());
        opening.error = opening.descriptor ? 0 : errno;
    }
    return opening;
}

Entry openParent(const FilePlace& place)
{
    const std::size_t end = place.below.find_last_not_of('/');
    if (end == std::string::npos)
        return openEntry(place.anchor);
    Entry entry;
    const std::string below = place.below.substr(0, end + 1);
    const std::size_t slash = below.rfind('/');
    entry.name = below.substr(slash == std::string::npos ? 0 : slash + 1);
    if (entry.name == "." || entry.name == "..") {
        entry.error = EINVAL;
        return entry;
    }
    Opening opening = openPlace({ place.anchor, slash == std::string::npos ? std::string() : below.substr(0, slash) });
    entry.directory = std::move(opening.descriptor);
    entry.error = opening.error;
    return entry;
}

} // namespace platform::detail
