#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <string_view>

/// Colours as preferences hold them.

namespace appledger {

/// Parts from 0 to 1.
struct HexColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    friend bool operator==(const HexColor&, const HexColor&) = default;
};

/// "#RRGGBB" or "#RRGGBBAA"; every "#" is left out. Empty for another length. Text that doesn't begin with a
/// hexadecimal number gives black, of eight digits a black that can't be seen.
std::optional<HexColor> parseHexColor(std::string_view text);

/// The UIColor of that text: the system's purple where it is none. Nil in a process without views.
platform::id colorFromHex(std::string_view text);

/// "#RRGGBB", or "#RRGGBBAA" of what can be seen through, each part cut to a whole number. The preferences' default for
/// nil and for a colour that is neither of red, green and blue nor a grey.
platform::id hexOfColor(const platform::id& color);

/// What stands where no colour is chosen.
inline constexpr std::string_view defaultColorHex = "#AF52DE";

} // namespace appledger
