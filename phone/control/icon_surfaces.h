#pragma once

#include <span>
#include <string_view>

namespace phone {

/// A place of the system that shows an application's icon, each by a method of its own.
struct IconSurface {
    std::string_view name; ///< what a person calls it: "banner"
    std::string_view process; ///< which has it, or the first of those that do
    std::string_view method;
};

/// The Home Screen's first.
std::span<const IconSurface> iconSurfaces() noexcept;

} // namespace phone
