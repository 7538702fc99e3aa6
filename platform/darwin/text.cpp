#include "platform/darwin/text.h"

#include <cstddef>

namespace platform::detail {

namespace {

/// The length of the well-formed sequence that the text begins with; 0 when it begins with none.
std::size_t sequenceLength(std::string_view text) noexcept
{
    const auto byte
        = [text](std::size_t index) { return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U; };
    const auto continues = [byte](std::size_t index) { return (byte(index) & 0xC0U) == 0x80U; };
    const unsigned first = byte(0);
    const unsigned second = byte(1);
    if (first < 0x80)
        return first == 0 ? 0 : 1;
    if (first >= 0xC2 && first <= 0xDF)
        return continues(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const bool overlong = first == 0xE0 && second < 0xA0;
        const bool surrogate = first == 0xED && second > 0x9F;
        return continues(1) && continues(2) && !overlong && !surrogate ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const bool overlong = first == 0xF0 && second < 0x90;
        const bool pastTheEnd = first == 0xF4 && second > 0x8F;
        return continues(1) && continues(2) && continues(3) && !overlong && !pastTheEnd ? 4 : 0;
    }
    return 0;
}

} // namespace

bool isText(std::string_view text) noexcept
{
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

} // namespace platform::detail
