#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class PropertyListFormat { Binary, Xml };

/// A copy that nobody can change: the value with immutable collections in place of mutable ones. Nil when
/// it holds an object that no property list can hold, a string with a NUL, a dictionary key that isn't a
/// string, or more than 128 collections inside each other.
id propertyListCopy(const id& value);

/// The value that the bytes hold, XML (UTF-8) and binary alike; nil when they aren't a property list, are
/// truncated, are nested deeper than 128 collections, are larger than 64 MiB, or come to more than four
/// million values or 256 MiB of text, as a binary one can by naming one object many times. Never crashes
/// on hostile input.
///
/// What a value can't hold is read as the nearest that it can: a string ends at a NUL, an integer past 63
/// bits wraps, and an archiver's reference becomes the dictionary {"CF$UID": number}. isKeptByWriting() tells.
id propertyListFromData(std::string_view bytes);

/// What bytes are as a property list, for who is about to write over them.
struct PropertyListReading {
    id value; ///< as propertyListFromData() gives it
    bool isDamaged = false; ///< they are no property list
    std::string_view problem; ///< why there is no value, for people; "" when there is one
};

PropertyListReading readPropertyList(std::string_view bytes);

/// Whether the value that the bytes hold, written again, is all that they hold: false for bytes without a value, and
/// where reading changed one (above).
bool isKeptByWriting(std::string_view bytes);

/// The bytes of a value, the same for equal dictionaries in whatever order they were made; or empty when it isn't one
/// that propertyListCopy() can copy; and, for XML, when a string holds a control character that XML has no way to
/// write. XML cuts a date to whole seconds.
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
