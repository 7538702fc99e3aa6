#pragma once

#include <optional>
#include <string_view>

namespace cli {

/// A part of the whole: a number from 0 to 1, or one from 0 to 100 with a "%" behind it, with or without a space
/// between. Empty for anything else; below 0 and above 1 nothing is such a part.
std::optional<double> parsePart(std::string_view text);

/// What to write for one, for people.
inline constexpr std::string_view expectedPart = "a number from 0 to 1, as 0.8, or a percentage, as 80%";

} // namespace cli
