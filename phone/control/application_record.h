#pragma once

#include "platform/runtime/object.h"

#include <nlohmann/json_fwd.hpp>
#include <string>

/// The library's record of an application, for requests about one. Found by its name: a phone without the library has
/// none.

namespace phone {

struct FoundRecord {
    platform::id record;
    std::string error; ///< for people, where there is no record
};

/// A new record of an installed application or a web clip, with the Home Screen's icon view of it.
FoundRecord applicationRecord(const std::string& bundleIdentifier);

/// Every field of a record, by its name.
nlohmann::json recordJson(const platform::id& record);

} // namespace phone
