#pragma once

#include <string_view>

namespace platform::detail {

/// True for well-formed UTF-8 without NUL bytes.
bool isText(std::string_view text) noexcept;

} // namespace platform::detail
