#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list_guard.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <vector>

namespace platform {

namespace {

/// The collections that the copy stands in, the innermost last: one that holds itself has no end.
using Open = std::vector<const NSObject*>;

id copyOf(const id& value, Open& open);

id copyOfArray(const ArrayValue& items, Open& open)
{
    std::vector<id> copies;
    copies.reserve(items.size());
    for (const id& item : items) {
        copies.push_back(copyOf(item, open));
        if (!copies.back())
            return nil;
    }
    return array(std::move(copies));
}

id copyOfDictionary(const DictionaryValue& pairs, Open& open)
{
    std::vector<DictionaryValue::Pair> copies;
    copies.reserve(pairs.size());
    for (const auto& [key, value] : pairs) {
        copies.emplace_back(asString(key) ? copyOf(key, open) : nil, copyOf(value, open));
        if (!copies.back().first || !copies.back().second)
            return nil;
    }
    return dictionary(std::move(copies));
}

id copyOf(const id& value, Open& open)
{
    if (const auto text = asString(value))
        return text->view().find('\0') == std::string_view::npos ? value : nil;
    if (numberKind(value) || asData(value) || asDate(value))
        return value;
    if (open.size() == detail::deepestPropertyList || std::ranges::find(open, value.get()) != open.end())
        return nil;
    open.push_back(value.get());
    id copied;
    if (const auto items = asArray(value))
        copied = copyOfArray(*items, open);
    else if (const auto pairs = asDictionary(value))
        copied = copyOfDictionary(*pairs, open);
    open.pop_back();
    return copied;
}

} // namespace

id propertyListCopy(const id& value)
{
    Open open;
    return copyOf(value, open);
}

} // namespace platform
