#pragma once

#include "platform/runtime/object.h"

#include <functional>
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
    bool isPlaceholder = false; ///< its content was removed and its data kept
    platform::id information {}; ///< its Info.plist, or nil
    std::vector<std::string> tags {}; ///< the strings of SBAppTags: "hidden" keeps it off the Home Screen
};

/// Every application folder of the device with a readable Info.plist that names a bundle identifier,
/// sorted by display name. Folders that are damaged are left out. An identifier stands once: the system's own bundle
/// has it before any of the owner's, and of these the one whose container comes first by name.
std::vector<InstalledApplication> installedApplications();

/// What the folder at that device path describes: without a bundle identifier where it is no application's.
InstalledApplication applicationInBundle(const std::string& bundlePath);

/// The system's object for an application, an LSApplicationProxy: what it knows is what stands on the device now, but
/// for the Info.plist, of which it keeps what was read.
platform::id proxyOf(const InstalledApplication& application);

/// The folder that the bundle lies in, with what the store keeps of it: its own, or that of all the system's.
std::string bundleContainerOf(const InstalledApplication& application);

/// Device path of the folder in which the application keeps its data; empty when it has none.
std::optional<std::string> dataContainerOf(std::string_view bundleIdentifier);

/// Device path of a container that applications share; empty when there is none.
std::optional<std::string> groupContainerOf(std::string_view group);

/// Device paths of what belongs to an identifier.
struct FoldersOfApplication {
    bool isOfSystem = false; ///< one of its bundles is the system's, and not among these
    std::vector<std::string> bundles {}; ///< a container where it holds no other's bundle
    std::vector<std::string> data {};
};
FoldersOfApplication foldersOfApplication(std::string_view bundleIdentifier);

enum class InstallationChange { Installed, Removed, Demoted };

/// Who hears, on the main queue, of applications that came or went by the system's services; one in a process.
void setInstallationObserver(
    std::function<void(InstallationChange change, const std::string& bundleIdentifier)> observer);
void tellOfInstallation(InstallationChange change, const std::string& bundleIdentifier);

/// Removes what is in the application's bundle but for its Info.plist, and keeps its data. "" when that is done, else a
/// sentence that says why not. Any thread.
std::string demoteInstalledApplication(const std::string& bundleIdentifier);

/// Removes the application for good, with its data and with every other bundle of the owner's that has its identifier.
/// It is whole or gone, whenever this process is killed. "" when it has gone, else a sentence that says why it stays,
/// as the system's own do.
std::string removeInstalledApplication(const std::string& bundleIdentifier);

} // namespace phone
