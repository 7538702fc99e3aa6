#pragma once

#include <span>
#include <string_view>

namespace phone {

/// An application that every phone comes with.
struct SampleApplication {
    std::string_view bundleIdentifier;
    std::string_view name; ///< shown under the icon, and of the ".app" folder and the executable
    std::string_view version;
    std::string_view urlScheme; ///< "" for none
    bool isSystem; ///< lies in /Applications instead of a container
};

/// Sorted by bundle identifier.
std::span<const SampleApplication> sampleApplications() noexcept;

} // namespace phone
