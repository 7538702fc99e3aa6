#pragma once

#include <cstddef>
#include <string_view>

/// What is asked of bytes before the property-list library, which trusts them in these respects, gets them.

namespace platform::detail {

constexpr std::size_t deepestPropertyList = 128; ///< collections inside each other
constexpr std::size_t largestPropertyList = std::size_t { 64 } << 20; ///< bytes
constexpr std::size_t mostPropertyListValues = std::size_t { 4 } << 20; ///< keys included

enum class Soundness {
    Sound,
    Malformed, ///< no property list, or a damaged one
    TooLarge, ///< beyond the bounds above
};

/// Sound when every object that the root reaches lies inside the bytes, keys are strings without a
/// NUL, nothing holds itself, and the whole stays within the bounds above once objects that are named twice are read
/// twice.
Soundness soundnessOfBinaryPropertyList(std::string_view bytes);

/// Whether a text of the sound one isn't kept by the library: it holds a NUL, or half a character.
bool binaryPropertyListHoldsForeignText(std::string_view bytes);

/// Sound when elements are closed in order, all are of the property list's own kinds, no text holds a NUL,
/// and the whole stays within the bounds above.
Soundness soundnessOfXmlPropertyList(std::string_view text);

} // namespace platform::detail
