#include "cli/explain_policies.h"

#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <fstream>
#include <iterator>

namespace cli {

using namespace platform;

ExplainPolicies::ExplainPolicies(const id& preferences)
    : redirect(preferences)
{
    const DictionaryValue values = pairsOf(preferences);
    requireAuth.assign(values["ALRequireAuthApps"]);
    blocked.assign(values["ALBlockedLaunchApps"]);
    hidden.assign(values["ALHiddenApps"]);
}

id preferencesFromHostFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes { std::istreambuf_iterator<char>(file), {} };
    id preferences = propertyListFromData(bytes);
    return asDictionary(preferences) ? preferences : nil;
}

} // namespace cli
