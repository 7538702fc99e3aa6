#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

/// An application as its folder on the device describes it.
struct InstalledApplication {
    std::string bundleIdentifier;
    std::string displayName;
    std::string version; ///< "1" where it tells none
    std::string bundlePath; ///< device path of the ".app" folder
    std::string executablePath;
    bool isSystem = false; ///< lies in /Applications
    std::vector<std::string> tags {}; ///< the strings of SBAppTags: "hidden" keeps it off the Home Screen
};

/// Every application folder of the device with a readable Info.plist that names a bundle identifier,
/// sorted by display name. Folders that are damaged are left out.
std::vector<InstalledApplication> installedApplications();

/// Device path of the folder in which the application keeps its data; empty when it has none.
std::optional<std::string> dataContainerOf(std::string_view bundleIdentifier);

/// Removes the folder and the data of an application that isn't the system's. "" when it has gone, else a sentence that
/// says what couldn't be done.
std::string removeInstalledApplication(const std::string& bundleIdentifier);

} // namespace phone
