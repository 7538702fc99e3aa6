#include "platform/foundation/utf8.h"

#include <algorithm>

namespace platform::detail {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

constexpr unsigned char byteAt(std::string_view text, std::size_t index) noexcept
{
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

constexpr bool continues(unsigned char byte) noexcept
{
    return (byte & 0xC0) == 0x80;
}

/// The length of the well-formed sequence that the text starts with; 0 when there is none.
std::size_t sequenceLength(std::string_view text) noexcept
{
    const unsigned char first = byteAt(text, 0);
    const unsigned char second = byteAt(text, 1);
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first > 0xF4 || !continues(second))
        return 0;
    if (first < 0xE0)
        return 2;
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) || !continues(byteAt(text, 2)))
        return 0;
    if (first < 0xF0)
        return 3;
    if ((first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F) || !continues(byteAt(text, 3)))
        return 0;
    return 4;
}

} // namespace

std::string wellFormedUtf8(std::string_view text)
{
    if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return std::string(text);
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        result += length > 0 ? text.substr(0, length) : replacement;
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::size_t utf16Length(std::string_view text) noexcept
{
    std::size_t length = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (!continues(byte))
            length += byte >= 0xF0 ? 2 : 1;
    }
    return length;
}

std::size_t bytesOfUtf16(std::string_view text, std::size_t units) noexcept
{
    std::size_t bytes = 0;
    for (std::size_t counted = 0; counted < units && bytes < text.size();) {
        const std::size_t length = std::max<std::size_t>(sequenceLength(text.substr(bytes)), 1);
        counted += length == 4 ? 2 : 1;
        bytes += length;
    }
    return bytes;
}

} // namespace platform::detail
