#include "cli/explain/explain_policies.h"

#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <fstream>
#include <sstream>

namespace cli {

using namespace platform;

ExplainPolicies::ExplainPolicies(const id& preferences)
    : requireAuth(pairsOf(preferences)["ALRequireAuthApps"])
    , blocked(pairsOf(preferences)["ALBlockedLaunchApps"])
    , hidden(pairsOf(preferences)["ALHiddenApps"])
    , blockedNotifications(pairsOf(preferences)["ALBlockedNotifications"])
    , mutedNotifications(pairsOf(preferences)["ALMutedNotifications"])
    , updateBlocked(pairsOf(preferences)["ALBlockedUpdateApps"])
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
