#pragma once

#include "platform/runtime/object.h"

#include <string>

namespace phone {

enum class FilterAnswer { Names, DoesNotName, Unreadable };

/// What a library's filter, a property list, says of a process. Under `Filter` it has the lists `Bundles` and
/// `Executables`; the process must be in each list that is there, or, where the filter's `Mode` is "Any", in one of
/// them. Unreadable: it has neither list, or isn't a filter at all.
FilterAnswer askFilter(
    const platform::id& propertyList, const std::string& bundleIdentifier, const std::string& processName);

} // namespace phone
