#pragma once

#include "platform/runtime/object.h"

#include <functional>
#include <string>

namespace appledger {

/// What an application's Info.plist and its executable say of it. A list is an array or nil, whatever its items are;
/// the versions are values of any type, as they stand there.
struct BundleFacts {
    platform::id minimumOSVersion;
    platform::id internalVersion;
    platform::id platformVersion;
    platform::id urlSchemes; ///< of the first kind of URL alone
    platform::id queriesSchemes;
    platform::id activityTypes;
    platform::id backgroundModes;
    bool isEncrypted = false;
};

/// Reads them from a dictionary, nil for none. The executable's path is asked about only if the dictionary names one
/// by a text; anything else, and an empty name, is no executable.
BundleFacts readBundleFacts(
    const platform::id& information, const std::function<bool(const std::string& executableName)>& isEncrypted);

} // namespace appledger
