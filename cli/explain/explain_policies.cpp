#include "cli/explain/explain_policies.h"

#include "core/policies.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <fstream>
#include <sstream>

namespace cli {

using namespace appledger;
using namespace platform;

ExplainPolicies::ExplainPolicies(const id& preferences)
    : requireAuth(pairsOf(preferences)[policy::requireAuth.key])
    , blocked(pairsOf(preferences)[policy::blockedLaunch.key])
    , hidden(pairsOf(preferences)[policy::hidden.key])
    , blockedNotifications(pairsOf(preferences)[policy::blockedNotifications.key])
    , mutedNotifications(pairsOf(preferences)[policy::mutedNotifications.key])
    , updateBlocked(pairsOf(preferences)[policy::blockedUpdate.key])
    , redirect(preferences)
{
}

id preferencesFromHostFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes; // takes an error of reading, as of a directory, for the end
    bytes << file.rdbuf();
    id preferences = propertyListFromData(bytes.str());
    return asDictionary(preferences) ? preferences : nil;
}

} // namespace cli
