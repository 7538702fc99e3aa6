#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class PropertyListFormat { Binary, Xml };

/// The value that the bytes hold, XML and binary alike; nil when they aren't a property list, are
/// truncated, are nested deeper than 128 collections, or are larger than 64 MiB. Never crashes on
/// hostile input.
id propertyListFromData(std::string_view bytes);

/// The bytes of a value, or empty when it holds an object that no property list can hold, a dictionary key
/// that isn't a string, or more than 128 collections inside each other.
std::optional<std::string> dataFromPropertyList(const id& value, PropertyListFormat format);

/// `dictionaryWithContentsOfFile:` and `arrayWithContentsOfFile:` on a device path: nil when the file is
/// missing, unreadable, malformed or of another root type.
id dictionaryWithContentsOfFile(std::string_view path);
id arrayWithContentsOfFile(std::string_view path);

/// `writeToFile:atomically:` of a property list. 0, or an `errno` (EINVAL for a value that no property
/// list can hold).
[[nodiscard]] int writePropertyList(
    const id& value, std::string_view path, PropertyListFormat format, unsigned mode = 0644);

} // namespace platform
