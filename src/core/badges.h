#pragma once

#include "platform/foundation/user_defaults.h"

#include <string_view>

/// Tables of badges, as the preference domain holds them: bundle identifier to badge. A badge is a number or a text.

namespace appledger {

/// The application's entry in a table; nil where there is none. A table and an entry of another type count as none.
platform::id badgeIn(const platform::id& table, const platform::id& bundleIdentifier);

/// Sets the entry of an application in the table of that key, or removes it (nil), and publishes that, in one operation
/// among all processes: of two who change a table neither loses the other's change. A value that isn't a table gives
/// way to one. What can't be written stays pending and is seen in this process; what no file can hold changes nothing.
void storeBadge(platform::NSUserDefaults& preferences, std::string_view key, const platform::id& bundleIdentifier,
    const platform::id& badge);

/// The same, unless the application has an entry.
void storeFirstBadge(platform::NSUserDefaults& preferences, std::string_view key, const platform::id& bundleIdentifier,
    const platform::id& badge);

} // namespace appledger
