#include "core/policies.h"

#include "platform/darwin/notify.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"

namespace appledger {

using namespace platform;

namespace {

const id& orEmpty(const id& value)
{
    return value ? value : emptyArray();
}

bool flagOf(const PreferenceKey& key, const NSUserDefaults& defaults)
{
    const bool isOnWhenAbsent = key.defaultText == "true";
    return (isOnWhenAbsent && !defaults.objectForKey(key.name)) || defaults.boolForKey(key.name);
}

void fillCache(const PreferenceKey& key, const NSUserDefaults& defaults)
{
    const auto& [value, flag, text] = key.cache;
    if (value)
        value->assign(key.type == PreferenceType::NumberTable ? defaults.dictionaryForKey(key.name)
                                                              : orEmpty(defaults.objectForKey(key.name)));
    if (flag)
        *flag = flagOf(key, defaults);
    if (text) {
        const auto stored = asString(defaults.stringForKey(key.name));
        text->assign(new std::string(stored ? stored->view() : key.defaultText));
    }
}

} // namespace

void reload(const Policy& policy)
{
    if (policy.reload)
        return policy.reload();
    const auto defaults = synchronizedPreferences();
    for (const PreferenceKey& key : preferenceTable)
        if (key.reloadName == policy.reloadName || (!policy.also.empty() && key.reloadName == policy.also))
            fillCache(key, *defaults);
}

void UpdateBlockedUpdateAppsCache()
{
    const std::string_view file = fileExists(rootlessPreferenceFile) ? rootlessPreferenceFile : preferenceFile;
    const auto stored = asDictionary(dictionaryWithContentsOfFile(file));
    const id value = stored ? (*stored)[policy::blockedUpdate.key] : nil;
    g_blockedUpdateApps.assign(
        value ? value : orEmpty(synchronizedPreferences()->objectForKey(policy::blockedUpdate.key)));
}

void RunningIndicatorChangedCallback()
{
    reload(policy::runningIndicator);
    CFNotificationCenterPostNotification(notification::forceRefresh);
}

id ALGetBlockedUpdateApps()
{
    const auto blocked = asArray(CFPreferencesCopyAppValue(policy::blockedUpdate.key, preferenceSuite));
    return blocked ? mutableArray({ blocked->begin(), blocked->end() }) : mutableArray();
}

} // namespace appledger
