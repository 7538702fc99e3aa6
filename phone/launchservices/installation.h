#pragma once

#include "phone/launchservices/installed_applications.h"

#include <string>
#include <string_view>

/// How an application comes onto the device.

namespace phone {

struct InstallationOutcome {
    std::string problem {}; ///< "" when it is installed, else why not, for people
    InstalledApplication application {}; ///< as it is on the device now
    bool isUpdate = false; ///< an application of that identifier was there, and has kept its data
};

/// Installs the application whose one bundle is in that staged folder, with a data container where it has none. An
/// application of the same identifier makes room for it, and keeps its data. Whenever this process is killed, the one
/// or the other is there, whole. Every process of the phone is told by the notification below. Any thread.
InstallationOutcome installStagedContainer(const std::string& stagedContainer);

inline constexpr std::string_view applicationRegistered = "com.apple.LaunchServices.applicationRegistered";

/// Device path of the one bundle of a container; "" where it has none or several.
std::string bundleIn(const std::string& container);

/// Why what the folder at that device path holds is no application that can be installed; "" where it is one.
std::string problemOfBundle(const std::string& bundlePath);

} // namespace phone
