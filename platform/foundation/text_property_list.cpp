#include "platform/foundation/text_property_list.h"

#include "platform/foundation/values.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace platform::detail {

namespace {

constexpr int deepest = 128;
constexpr std::string_view space = " \t\r\n\f\v";

bool isWordCharacter(char character)
{
    constexpr std::string_view signs = "_$/:.-";
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z')
        || (character >= 'a' && character <= 'z') || signs.find(character) != std::string_view::npos;
}

/// The value of a digit in that base; -1 for what is none.
int digit(char character, int base)
{
    int value = -1;
    if (character >= '0' && character <= '9')
        value = character - '0';
    else if ((character | 0x20) >= 'a' && (character | 0x20) <= 'f')
        value = (character | 0x20) - 'a' + 10;
    return value < base ? value : -1;
}

/// A character of the basic plane; half of a pair becomes what the text's string makes of it.
void appendScalar(std::string& text, char32_t scalar)
{
    if (scalar < 0x80)
        text.push_back(static_cast<char>(scalar));
    else if (scalar < 0x800)
        text.append({ static_cast<char>(0xC0 | scalar >> 6), static_cast<char>(0x80 | (scalar & 0x3F)) });
    else
        text.append({ static_cast<char>(0xE0 | scalar >> 12), static_cast<char>(0x80 | (scalar >> 6 & 0x3F)),
            static_cast<char>(0x80 | (scalar & 0x3F)) });
}

class Reader {
public:
    explicit Reader(std::string_view text)
        : rest_(text)
    {
    }

    std::optional<id> readAll()
    {
        std::optional<id> value = readValue(0);
        return skipSpace() && rest_.empty() ? value : std::nullopt;
    }

private:
    /// Space and comments; false when a comment has no end.
    bool skipSpace()
    {
        while (true) {
            rest_.remove_prefix(std::min(rest_.find_first_not_of(space), rest_.size()));
            if (rest_.starts_with("//"))
                rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size()));
            else if (rest_.starts_with("/*")) {
                const std::size_t end = rest_.find("*/", 2);
                if (end == std::string_view::npos)
                    return false;
                rest_.remove_prefix(end + 2);
            } else
                return true;
        }
    }

    bool take(char character)
    {
        if (!skipSpace() || !rest_.starts_with(character))
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::optional<id> readValue(int depth)
    {
        if (depth > deepest || !skipSpace() || rest_.empty())
            return std::nullopt;
        switch (rest_.front()) {
        case '{':
            return readDictionary(depth);
        case '(':
            return readArray(depth);
        case '<':
            return readData();
        default:
            if (const std::optional<std::string> text = readText())
                return string(*text);
            return std::nullopt;
        }
    }

    std::optional<id> readDictionary(int depth)
    {
        std::vector<std::pair<id, id>> pairs;
        take('{');
        while (!take('}')) {
            std::optional<std::string> key = readText();
            if (!key || !take('='))
                return std::nullopt;
            std::optional<id> value = readValue(depth + 1);
            if (!value || !take(';'))
                return std::nullopt;
            pairs.emplace_back(string(*key), std::move(*value));
        }
        return dictionary(std::move(pairs));
    }

    std::optional<id> readArray(int depth)
    {
        std::vector<id> items;
        take('(');
        while (!take(')')) {
            if (!items.empty() && !take(','))
                return std::nullopt;
            // A comma may stand behind the last item.
            if (!items.empty() && take(')'))
                break;
            std::optional<id> item = readValue(depth + 1);
            if (!item)
                return std::nullopt;
            items.push_back(std::move(*item));
        }
        return array(std::move(items));
    }

    std::optional<id> readData()
    {
        std::string bytes;
        int half = -1;
        take('<');
        while (!take('>')) {
            if (rest_.empty())
                return std::nullopt;
            const int value = digit(rest_.front(), 16);
            if (value < 0)
                return std::nullopt;
            rest_.remove_prefix(1);
            if (half < 0)
                half = value;
            else
                bytes.push_back(static_cast<char>(std::exchange(half, -1) << 4 | value));
        }
        return half < 0 ? std::optional(platform::data(bytes)) : std::nullopt;
    }

    std::optional<std::string> readText()
    {
        if (!skipSpace() || rest_.empty())
            return std::nullopt;
        if (const char quote = rest_.front(); quote == '"' || quote == '\'')
            return readQuoted(quote);
        std::size_t length = 0;
        while (length < rest_.size() && isWordCharacter(rest_[length]))
            ++length;
        if (length == 0)
            return std::nullopt;
        const std::string word(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return word;
    }

    std::optional<std::string> readQuoted(char quote)
    {
        rest_.remove_prefix(1);
        std::string text;
        while (!rest_.empty()) {
            const char character = rest_.front();
            rest_.remove_prefix(1);
            if (character == quote)
                return text;
            if (character != '\\')
                text.push_back(character);
            else if (!readEscape(text))
                return std::nullopt;
        }
        return std::nullopt;
    }

    bool readEscape(std::string& text)
    {
        constexpr std::string_view names = "abfnrtv";
        constexpr std::string_view meanings = "\a\b\f\n\r\t\v";
        if (rest_.empty())
            return false;
        const char character = rest_.front();
        if (digit(character, 8) >= 0) {
            appendScalar(text, readNumber(3, 8));
            return true;
        }
        rest_.remove_prefix(1);
        if (const std::size_t name = names.find(character); name != std::string_view::npos)
            text.push_back(meanings[name]);
        else if (character == 'U')
            appendScalar(text, readNumber(4, 16));
        else
            text.push_back(character);
        return true;
    }

    char32_t readNumber(int mostDigits, int base)
    {
        char32_t number = 0;
        for (int count = 0; count < mostDigits && !rest_.empty() && digit(rest_.front(), base) >= 0; ++count) {
            number = number * static_cast<char32_t>(base) + static_cast<char32_t>(digit(rest_.front(), base));
            rest_.remove_prefix(1);
        }
        return number;
    }

    std::string_view rest_;
};

} // namespace

std::optional<id> readTextPropertyList(std::string_view text)
{
    return Reader(text).readAll();
}

} // namespace platform::detail
