#include "platform/foundation/property_list_guard.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace platform::detail {

namespace {

constexpr std::string_view leaves[] { "data", "date", "false", "integer", "key", "real", "string", "true" };
constexpr std::string_view collections[] { "array", "dict" };

/// Collections that only a reader who takes hidden text for elements would see. The bytes of a comment are
/// no elements; should the library ever think otherwise, this many more levels do it no harm.
constexpr std::size_t mostHiddenCollections = 500;

bool isOneOf(std::string_view name, auto& names)
{
    return std::ranges::find(names, name) != std::end(names);
}

std::size_t occurrences(std::string_view text, std::string_view part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// Whether every numeric character reference is of a character. The library ends the process at a key with
/// a NUL in it, so that none may come up in any way.
bool hasSoundCharacters(std::string_view text)
{
    if (text.find('\0') != std::string_view::npos)
        return false;
    for (std::size_t at = text.find("&#"); at != std::string_view::npos; at = text.find("&#", at + 1)) {
        const bool isHexadecimal = at + 2 < text.size() && (text[at + 2] == 'x' || text[at + 2] == 'X');
        const char* const first = text.data() + at + (isHexadecimal ? 3 : 2);
        const char* const last = text.data() + text.size();
        unsigned character = 0;
        const auto [end, problem] = std::from_chars(first, last, character, isHexadecimal ? 16 : 10);
        if (problem != std::errc() || end == last || *end != ';' || character == 0 || character > 0x10FFFF)
            return false;
    }
    return true;
}

class XmlGuard {
public:
    explicit XmlGuard(std::string_view text)
        : rest_(text)
    {
    }

    Soundness soundness()
    {
        const bool isSound = isSoundWithinBounds();
        return isTooLarge_ ? Soundness::TooLarge : isSound ? Soundness::Sound : Soundness::Malformed;
    }

private:
    bool isSoundWithinBounds()
    {
        if (!hasSoundCharacters(rest_))
            return false;
        while (true) {
            const std::size_t start = rest_.find('<');
            if (start == std::string_view::npos)
                break;
            rest_.remove_prefix(start);
            if (!readMarkup())
                return false;
        }
        return open_.empty() && values_ > 0;
    }

    bool readMarkup()
    {
        if (rest_.starts_with("<!--"))
            return skipPast("-->", 4);
        if (rest_.starts_with("<![CDATA["))
            return !open_.empty() && isOneOf(open_.back(), leaves) && skipPast("]]>", 9);
        if (rest_.starts_with("<?"))
            return skipPast("?>", 2);
        if (rest_.starts_with("<!"))
            return open_.empty() && rest_.substr(0, rest_.find('>')).find('[') == std::string_view::npos
                && skipPast(">", 2);
        return readElement();
    }

    bool skipPast(std::string_view end, std::size_t from)
    {
        const std::size_t found = rest_.find(end, from);
        if (found == std::string_view::npos)
            return false;
        const std::string_view skipped = rest_.substr(0, found);
        hidden_ += occurrences(skipped, "<array") + occurrences(skipped, "<dict");
        rest_.remove_prefix(found + end.size());
        return hidden_ <= mostHiddenCollections;
    }

    bool readElement()
    {
        const std::size_t end = endOfTag();
        if (end == std::string_view::npos)
            return false;
        std::string_view tag = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        if (tag.starts_with('/')) {
            tag.remove_prefix(1);
            return close(tag.substr(0, tag.find_first_of(" \t\r\n")));
        }
        const bool isEmpty = tag.ends_with('/');
        if (isEmpty)
            tag.remove_suffix(1);
        return open(tag.substr(0, tag.find_first_of(" \t\r\n"))) && (!isEmpty || close(open_.back()));
    }

    /// The ">" that isn't in an attribute's quotes.
    std::size_t endOfTag() const
    {
        char quote = '\0';
        for (std::size_t at = 1; at < rest_.size(); ++at) {
            const char c = rest_[at];
            if (quote != '\0')
                quote = c == quote ? '\0' : quote;
            else if (c == '"' || c == '\'')
                quote = c;
            else if (c == '>' || c == '<')
                return c == '>' ? at : std::string_view::npos;
        }
        return std::string_view::npos;
    }

    bool open(std::string_view name)
    {
        const bool isCollection = isOneOf(name, collections);
        const bool isRoot = name == "plist" && open_.empty();
        if (!isRoot && !isCollection && !isOneOf(name, leaves))
            return false;
        if (!open_.empty() && isOneOf(open_.back(), leaves))
            return false;
        depth_ += isCollection ? 1 : 0;
        values_ += isRoot ? 0 : 1;
        open_.push_back(name);
        isTooLarge_ = depth_ > deepestPropertyList || values_ > mostPropertyListValues;
        return !isTooLarge_;
    }

    bool close(std::string_view name)
    {
        if (open_.empty() || open_.back() != name)
            return false;
        open_.pop_back();
        if (isOneOf(name, collections))
            --depth_;
        return true;
    }

    std::string_view rest_;
    std::vector<std::string_view> open_; ///< elements, the innermost last
    std::size_t depth_ = 0;
    std::size_t hidden_ = 0;
    std::size_t values_ = 0;
    bool isTooLarge_ = false;
};

} // namespace

Soundness soundnessOfXmlPropertyList(std::string_view text)
{
    return XmlGuard(text).soundness();
}

} // namespace platform::detail
