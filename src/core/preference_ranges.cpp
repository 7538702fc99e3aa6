#include "core/preference_ranges.h"

#include "platform/foundation/values.h"

#include <algorithm>

namespace appledger::preferenceRange {

using namespace platform;

bool isAppearance(const id& value)
{
    const auto style = asInteger(value);
    return style && *style >= 0 && *style <= 2;
}

bool isDirectoryOpener(const id& value)
{
    const auto text = asString(value);
    return text && (*text == "filza" || *text == "fila");
}

bool isColor(const id& value)
{
    const auto text = asString(value);
    if (!text || !text->view().starts_with('#'))
        return false;
    const std::string_view digits = text->view().substr(1);
    return (digits.size() == 6 || digits.size() == 8)
        && digits.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

bool isLanguage(const id& value)
{
    const auto text = asString(value);
    return text && (*text == "en" || *text == "zh");
}

bool isRowList(const id& value)
{
    const ArrayValue items = itemsOf(value);
    return asArray(value) && std::ranges::all_of(items, [](const id& item) {
        const auto name = asString(item);
        return name && std::ranges::find(rows, name->view()) != std::end(rows);
    });
}

} // namespace appledger::preferenceRange
