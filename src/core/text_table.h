#pragma once

#include <span>
#include <string_view>

namespace appledger {

/// One text in every language that there is. A further language is a further column here and a line in
/// the list of languages (text.cpp).
struct TextRow {
    std::string_view key; ///< what the code says
    std::string_view english = key;
};

/// Each key once. The texts live as long as the process.
std::span<const TextRow> textTable() noexcept;

} // namespace appledger
