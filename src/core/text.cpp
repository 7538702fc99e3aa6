#include "core/text.h"

#include "core/policies.h"
#include "core/text_table.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/locale.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <unordered_map>

namespace appledger {

using namespace platform;

namespace {

struct Language {
    std::string_view name;
    std::string_view TextRow::*column;
};

constexpr Language languages[] {
    { "en", &TextRow::english },
};

using TextIndex = std::unordered_map<std::string_view, const TextRow*>;

/// The rows by their keys.
const TextIndex& textIndex()
{
    static constinit dispatch_once_t once { 0 };
    static constinit const TextIndex* index = nullptr;
    dispatch_once(once, [] {
        auto* const built = new TextIndex;
        for (const TextRow& row : textTable())
            built->emplace(row.key, &row);
        index = built;
    });
    return *index;
}

} // namespace

std::string_view ALLoc(std::string_view text)
{
    return text.empty() ? text : textIn(textLanguage(), text);
}

const std::string& textLanguage()
{
    static constinit dispatch_once_t once { 0 };
    static constinit const std::string* language = nullptr;
    dispatch_once(once, [] {
        const auto stored = asString(preferences()->stringForKey(preference::language));
        language = new std::string(chooseLanguage(stored ? stored->view() : "", preferredLanguages()));
    });
    return *language;
}

std::string chooseLanguage(std::string_view stored, std::span<const std::string> preferred)
{
    if (!stored.empty())
        return std::string(stored);
    return !preferred.empty() && preferred.front().starts_with("en") ? "en" : "zh";
}

std::string_view textIn(std::string_view language, std::string_view text)
{
    const auto known = std::ranges::find(languages, language, &Language::name);
    if (known == std::end(languages))
        return text;
    const auto row = textIndex().find(text);
    return row == textIndex().end() ? text : row->second->*known->column;
}

} // namespace appledger
