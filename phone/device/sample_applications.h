#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace phone {

using Texts = std::span<const std::string_view>;

/// What an application declares in its Info.plist and its entitlements.
struct Declarations {
    Texts otherSchemes {}; ///< of its URLs' second kind
    Texts queriesSchemes {}; ///< of others' URLs
    Texts activityTypes {};
    Texts backgroundModes {};
    Texts groups {}; ///< whose containers it shares
};

/// An application that every phone comes with.
struct SampleApplication {
    std::string_view bundleIdentifier;
    std::string_view name; ///< shown under the icon, and of the ".app" folder and the executable
    std::string_view version;
    std::string_view urlScheme; ///< "" for none
    bool isSystem; ///< lies in /Applications instead of a container
    std::int64_t storeIdentifier = 0; ///< under which the store sells it; 0 for what it doesn't
    Declarations declarations {};
};

/// Sorted by bundle identifier.
std::span<const SampleApplication> sampleApplications() noexcept;

} // namespace phone
