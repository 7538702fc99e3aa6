#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// How many letters are to be added, left out, exchanged or swapped with their neighbour to make one text of the other;
/// capitals count as small ones.
std::size_t distanceBetween(std::string_view one, std::string_view other);

/// The candidate that somebody meant who wrote `word`: the nearest, if it isn't so far that it is another word.
std::optional<std::string> nearest(std::string_view word, const std::vector<std::string>& candidates);

} // namespace cli
