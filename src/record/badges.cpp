#include "core/badges.h"

#include "core/policies.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "record/app_ledger.h"

namespace appledger {

using namespace platform;

namespace {

void setPanelModifying(NSUserDefaults& defaults, bool isModifying)
{
    defaults.setBool(isModifying, preference::isPanelModifying);
    defaults.synchronize();
}

/// Gives the application a badge that isn't taken for one of its own: the flag says so to every process meanwhile.
void sendBadge(NSUserDefaults& defaults, const id& application, const id& badge)
{
    setPanelModifying(defaults, true);
    if (!ask<"setBadgeValue:", void>(application, badge))
        ask<"setBadgeNumberOrString:", void>(application, badge);
    setPanelModifying(defaults, false);
}

} // namespace

std::int64_t ALAppLedger::appBadgeCount() const
{
    auto badge = ask<"badgeValue">(sbApplication);
    if (!badge)
        badge = ask<"badgeNumberOrString">(sbApplication);
    return ask<"integerValue", NSInteger>(badge.value_or(nil)).value_or(0);
}

void ALAppLedger::setAppBadgeCount(std::int64_t count)
{
    const auto defaults = synchronizedPreferences();
    if (bundleIdentifier)
        storeFirstBadge(*defaults, preference::realBadges, bundleIdentifier, number(appBadgeCount()));
    sendBadge(*defaults, sbApplication, number(count));
    if (!bundleIdentifier)
        return;
    storeBadge(*defaults, preference::customBadges, bundleIdentifier, number(count));
    CFNotificationCenterPostNotification(policy::customBadges.notification);
}

void ALAppLedger::restoreAppBadgeDefault()
{
    const auto defaults = synchronizedPreferences();
    if (!badgeIn(defaults->objectForKey(preference::customBadges), bundleIdentifier))
        return;
    storeBadge(*defaults, preference::customBadges, bundleIdentifier, nil);
    const id real = badgeIn(defaults->objectForKey(preference::realBadges), bundleIdentifier);
    sendBadge(*defaults, sbApplication, real ? real : number(0));
    CFNotificationCenterPostNotification(policy::customBadges.notification);
}

} // namespace appledger
