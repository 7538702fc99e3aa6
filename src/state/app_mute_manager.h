#pragma once

#include "platform/runtime/object.h"

#include <string>
#include <string_view>

namespace appledger {

/// The device path of the mute list, a property list whose root is an array of bundle identifiers.
std::string GetAppMutePrefPath();

/// Which applications are silent while they are in front. One instance, on the main queue.
class AppMuteManager {
public:
    static AppMuteManager& sharedManager();

    /// Reads the list anew, so that a change needs no notification; while the file can't be read, the last
    /// list stays in force.
    bool isMuted(std::string_view bundleIdentifier);

private:
    AppMuteManager();

    platform::id mutedBundleIDs_;
};

} // namespace appledger
