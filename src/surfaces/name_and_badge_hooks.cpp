#include "surfaces/name_and_badge_hooks.h"

#include "core/badges.h"
#include "core/policies.h"
#include "core/settings.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

struct DisplayName : Hook<DisplayName, "SBApplication", "displayName", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        if (const auto identifier = ask<"bundleIdentifier">(self))
            if (id name = ALSettings::customAppNameForBundleIdentifier(*identifier))
                return name;
        return original(self, cmd);
    }
};

/// What the system is to be given in the place of that badge. One that isn't the panel's own is recorded, so that the
/// application's can be restored.
id badgeToSet(const id& application, const id& badge)
{
    const auto defaults = synchronizedPreferences();
    const id identifier = askObject<"bundleIdentifier">(application);
    if (identifier && !defaults->boolForKey(preference::isPanelModifying))
        storeBadge(*defaults, preference::realBadges, identifier, badge ? badge : number(0));
    const id custom = badgeIn(defaults->objectForKey(preference::customBadges), identifier);
    return custom ? custom : badge;
}

/// Asked at every layout of an icon, and so of the cache alone.
id customBadgeOf(const id& application)
{
    const id badges = g_customBadgesCache.value();
    return badges ? badgeIn(badges, askObject<"bundleIdentifier">(application)) : nil;
}

struct SetBadgeValue : Hook<SetBadgeValue, "SBApplication", "setBadgeValue:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& badge) { original(self, cmd, badgeToSet(self, badge)); }
};

struct SetBadgeNumberOrString : Hook<SetBadgeNumberOrString, "SBApplication", "setBadgeNumberOrString:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& badge) { original(self, cmd, badgeToSet(self, badge)); }
};

struct BadgeValue : Hook<BadgeValue, "SBApplication", "badgeValue", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        id custom = customBadgeOf(self);
        return custom ? custom : original(self, cmd);
    }
};

struct BadgeNumberOrString : Hook<BadgeNumberOrString, "SBApplication", "badgeNumberOrString", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        id custom = customBadgeOf(self);
        return custom ? custom : original(self, cmd);
    }
};

constexpr HookRow rows[] {
    DisplayName::row(),
    SetBadgeValue::row(),
    SetBadgeNumberOrString::row(),
    BadgeValue::row(),
    BadgeNumberOrString::row(),
};

} // namespace

const HookRows nameAndBadgeRows { rows };

} // namespace appledger
