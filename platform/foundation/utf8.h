#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform::detail {

/// The text with each byte that isn't part of a well-formed UTF-8 sequence replaced by U+FFFD. Overlong
/// forms, surrogates and code points past U+10FFFF aren't well formed.
std::string wellFormedUtf8(std::string_view text);

/// The number of UTF-16 units of a well-formed text.
std::size_t utf16Length(std::string_view text) noexcept;

/// How many bytes of it are the first so many UTF-16 units; one that is cut in two counts whole. Its size for more than
/// it has.
std::size_t bytesOfUtf16(std::string_view text, std::size_t units) noexcept;

} // namespace platform::detail
