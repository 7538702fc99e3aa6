#include "phone/substrate/filter.h"

#include "platform/foundation/values.h"

#include <algorithm>
#include <vector>

namespace phone {

using namespace platform;

FilterAnswer askFilter(const id& propertyList, const std::string& bundleIdentifier, const std::string& processName)
{
    const DictionaryValue filter = pairsOf(pairsOf(propertyList)["Filter"]);
    std::vector<bool> answers;
    if (const auto bundles = asArray(filter["Bundles"]))
        answers.push_back(bundles->contains(bundleIdentifier));
    if (const auto executables = asArray(filter["Executables"]))
        answers.push_back(executables->contains(processName));
    if (answers.empty())
        return FilterAnswer::Unreadable;
    const auto mode = asString(filter["Mode"]);
    const bool isNamed = mode && mode->text() == "Any" ? std::ranges::any_of(answers, std::identity {})
                                                       : std::ranges::all_of(answers, std::identity {});
    return isNamed ? FilterAnswer::Names : FilterAnswer::DoesNotName;
}

} // namespace phone
