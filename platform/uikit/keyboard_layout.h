#pragma once

#include "platform/graphics/geometry.h"

#include <string>
#include <vector>

/// Where which keys stand: values alone.

namespace platform {

/// What whoever takes the text wants to be typed, by the system's numbers.
enum class KeyboardType : long {
    Default = 0,
    AsciiCapable = 1,
    NumbersAndPunctuation = 2,
    Url = 3,
    NumberPad = 4,
    PhonePad = 5,
    NamePhonePad = 6,
    EmailAddress = 7,
    DecimalPad = 8,
    Twitter = 9,
    WebSearch = 10,
    AsciiNumberPad = 11,
};

enum class KeyKind { Character, Space, Return, Delete, Shift, Page };
enum class KeyPage { Letters, Digits, Symbols, NumberPad, DecimalPad, PhonePad };

struct KeyCap {
    KeyKind kind = KeyKind::Character;
    std::string text {}; ///< what a character's key enters, in small letters
    KeyPage page = KeyPage::Letters; ///< where a key of that kind leads
    CGRect frame {};
    friend bool operator==(const KeyCap&, const KeyCap&) = default;
};

/// The page that a keyboard of that type begins with.
KeyPage firstPage(KeyboardType type) noexcept;
/// Whether the page is a pad of large keys for digits.
bool isPadPage(KeyPage page) noexcept;
/// From the first row's left to the last one's right. Keys don't overlap, and stand in a box of that size.
std::vector<KeyCap> keysOf(KeyPage page, KeyboardType type, CGSize size);
/// The key that a finger means; null for no keys.
const KeyCap* keyNear(const std::vector<KeyCap>& keys, CGPoint point) noexcept;
/// "return", or what the number of a return key says instead.
std::string returnKeyTitle(long returnKeyType);
/// Whether the key stands out.
bool isReturnKeyProminent(long returnKeyType) noexcept;

} // namespace platform
