#pragma once

#include <span>
#include <string_view>

namespace phone {

/// What an application may be allowed to use.
struct Service {
    std::string_view word;
    std::string_view name; ///< by which the system knows it; "" for the place, which is kept elsewhere
};

std::span<const Service> services() noexcept;

} // namespace phone
