#include "cli/command/nearest.h"

#include <algorithm>
#include <cctype>

namespace cli {

namespace {

constexpr std::size_t longestWord = 100; ///< nobody has meant another word by a longer one

char small(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

} // namespace

std::size_t distanceBetween(std::string_view one, std::string_view other)
{
    std::vector<std::size_t> beforeLast(other.size() + 1);
    std::vector<std::size_t> last(other.size() + 1);
    std::vector<std::size_t> row(other.size() + 1);
    for (std::size_t column = 0; column <= other.size(); ++column)
        row[column] = column;
    for (std::size_t line = 1; line <= one.size(); ++line) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = line;
        for (std::size_t column = 1; column <= other.size(); ++column) {
            const bool isSame = small(one[line - 1]) == small(other[column - 1]);
            row[column] = std::min({ last[column] + 1, row[column - 1] + 1, last[column - 1] + (isSame ? 0 : 1) });
            if (line > 1 && column > 1 && small(one[line - 1]) == small(other[column - 2])
                && small(one[line - 2]) == small(other[column - 1]))
                row[column] = std::min(row[column], beforeLast[column - 2] + 1);
        }
    }
    return row[other.size()];
}

std::optional<std::string> nearest(std::string_view word, const std::vector<std::string>& candidates)
{
    if (word.empty() || word.size() > longestWord)
        return std::nullopt;
    std::optional<std::string> best;
    std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = distanceBetween(word, candidate);
        if (distance < least) {
            least = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace cli
