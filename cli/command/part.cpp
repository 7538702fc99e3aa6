#include "cli/command/part.h"

#include <charconv>

namespace cli {

std::optional<double> parsePart(std::string_view text)
{
    const bool isPercentage = text.ends_with('%');
    if (isPercentage) {
        text.remove_suffix(1);
        while (text.ends_with(' '))
            text.remove_suffix(1);
    }
    double number = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    if (error != std::errc() || end != last)
        return std::nullopt;
    const double part = isPercentage ? number / 100 : number;
    return part >= 0 && part <= 1 ? std::optional(part) : std::nullopt;
}

} // namespace cli
