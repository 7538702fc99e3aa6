#include "surfaces/hidden_app_hooks.h"

#include "core/bundle_identifier.h"
#include "core/policy_caches.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

bool isHidden(const std::optional<StringValue>& identifier)
{
    return identifier && g_hiddenApps.contains(*identifier);
}

/// Of an application, and of what the system knows of one.
bool isHiddenApplication(const id& application)
{
    return isHidden(asString(ask<"bundleIdentifier">(application)));
}

Original<bool(id)> original_isIconVisible;

bool SBHIconModel_isIconVisible(const id& self, SEL cmd, const id& icon)
{
    return !isHidden(applicationOfIcon(icon)) && original_isIconVisible(self, cmd, icon);
}

Original<id()> original_visibleIconIdentifiers;

id SBHIconModel_visibleIconIdentifiers(const id& self, SEL cmd)
{
    id identifiers = original_visibleIconIdentifiers(self, cmd);
    const PolicyCache::Reading hidden = g_hiddenApps.read();
    if (hidden.list().size() == 0 || !asSet(identifiers))
        return identifiers;
    std::vector<id> visible;
    for (const id& identifier : itemsOf(identifiers))
        if (const auto text = asString(identifier); !text || !hidden.contains(*text))
            visible.push_back(identifier);
    return mutableSet(std::move(visible));
}

Original<bool()> original_isVisible;

bool SBApplicationIcon_isVisible(const id& self, SEL cmd)
{
    return !isHidden(asString(ask<"applicationBundleIdentifier">(self))) && original_isVisible(self, cmd);
}

Original<bool()> original_infoIsHidden;

bool SBApplicationInfo_isHidden(const id& self, SEL cmd)
{
    return isHiddenApplication(self) || original_infoIsHidden(self, cmd);
}

Original<id()> original_tags;

id SBApplicationInfo_tags(const id& self, SEL cmd)
{
    id tags = original_tags(self, cmd);
    const auto present = asArray(tags);
    if (!isHiddenApplication(self) || (tags && !present) || (present && present->contains("hidden")))
        return tags;
    const auto items = itemsOf(tags);
    std::vector<id> extended(items.begin(), items.end());
    extended.push_back(string("hidden"));
    return array(std::move(extended));
}

Original<bool()> original_applicationIsHidden;

bool SBApplication_isHidden(const id& self, SEL cmd)
{
    return isHiddenApplication(self) || original_applicationIsHidden(self, cmd);
}

constexpr HookRow rows[] {
    replace<&SBHIconModel_isIconVisible>("SBHIconModel", "isIconVisible:", original_isIconVisible),
    replace<&SBHIconModel_visibleIconIdentifiers>(
        "SBHIconModel", "visibleIconIdentifiers", original_visibleIconIdentifiers),
    replace<&SBApplicationIcon_isVisible>("SBApplicationIcon", "isVisible", original_isVisible),
    replace<&SBApplicationInfo_isHidden>("SBApplicationInfo", "isHidden", original_infoIsHidden),
    replace<&SBApplicationInfo_tags>("SBApplicationInfo", "tags", original_tags),
    replace<&SBApplication_isHidden>("SBApplication", "isHidden", original_applicationIsHidden),
};

} // namespace

const HookGroup HiddenAppHooks { "HiddenAppHooks", rows };

} // namespace appledger
