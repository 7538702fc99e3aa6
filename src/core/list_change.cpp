#include "core/list_change.h"

#include "platform/foundation/values.h"

#include <vector>

namespace appledger {

using namespace platform;

std::optional<ChangedList> changedList(const id& list, ListChange change, std::string_view identifier)
{
    if (list && !asArray(list))
        return std::nullopt;
    const ArrayValue present = itemsOf(list);
    const id item = string(identifier);
    const bool isListed = present.contains(item);
    const bool isWanted = change == ListChange::Toggle ? !isListed : change == ListChange::Add;
    std::vector<id> items(present.begin(), present.end());
    if (!isWanted)
        std::erase_if(items, [&item](const id& each) { return isEqual(each, item); });
    else if (!isListed)
        items.push_back(item);
    return ChangedList { array(std::move(items)), isWanted };
}

} // namespace appledger
