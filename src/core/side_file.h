#pragma once

#include "platform/foundation/property_list_file.h"

#include <string>

/// The policies that lie in files of their own, which other programs write too.

namespace appledger {

inline constexpr platform::PropertyListFileKind sideFileWithArray { platform::PropertyListRoot::Array,
    platform::PropertyListFormat::Xml, 0777 };
inline constexpr platform::PropertyListFileKind sideFileWithDictionary { platform::PropertyListRoot::Dictionary,
    platform::PropertyListFormat::Xml, 0777 };

/// Lets everybody write the file that was just changed, as its other writers do. The outcome with what went wrong.
platform::WriteOutcome openedToEveryWriter(const std::string& path, platform::WriteOutcome outcome);

} // namespace appledger
