#pragma once

#include <string_view>

namespace platform::detail {

/// True for well-formed UTF-8 without NUL bytes: what can be sent over the bus as text.
bool isBusText(std::string_view text) noexcept;

} // namespace platform::detail
