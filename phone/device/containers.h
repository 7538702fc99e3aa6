#pragma once

#include <string_view>

/// Where the device keeps the folders of applications.

namespace phone {

inline constexpr std::string_view bundleContainers = "/var/containers/Bundle/Application";
inline constexpr std::string_view dataContainers = "/var/mobile/Containers/Data/Application";
inline constexpr std::string_view groupContainers = "/var/mobile/Containers/Shared/AppGroup";

/// The property list in a container that says whose it is, and the key of its owner's identifier.
inline constexpr std::string_view containerMetadata = ".com.apple.mobile_container_manager.metadata.plist";
inline constexpr std::string_view containerOwnerKey = "MCMMetadataIdentifier";

/// In a bundle's container: what the store knows of it, and the key of the number under which it sells it.
inline constexpr std::string_view storeMetadata = "iTunesMetadata.plist";
inline constexpr std::string_view storeIdentifierKey = "itemId";

/// In a bundle's container, where the bundle's content was removed and its data kept.
inline constexpr std::string_view placeholderMark = ".placeholder";

} // namespace phone
