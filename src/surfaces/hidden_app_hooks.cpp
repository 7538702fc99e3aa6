#include "surfaces/hidden_app_hooks.h"

#include "core/bundle_identifier.h"
#include "core/policies.h"
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

struct IsIconVisible : Hook<IsIconVisible, "SBHIconModel", "isIconVisible:", bool(id)> {
    static bool replacement(const id& self, SEL cmd, const id& icon)
    {
        return !isHidden(applicationOfIcon(icon)) && original(self, cmd, icon);
    }
};

struct VisibleIconIdentifiers : Hook<VisibleIconIdentifiers, "SBHIconModel", "visibleIconIdentifiers", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        id identifiers = original(self, cmd);
        const PolicyCache::Reading hidden = g_hiddenApps.read();
        if (hidden.list().size() == 0 || !asSet(identifiers))
            return identifiers;
        std::vector<id> visible;
        for (const id& identifier : itemsOf(identifiers))
            if (const auto text = asString(identifier); !text || !hidden.contains(*text))
                visible.push_back(identifier);
        return mutableSet(std::move(visible));
    }
};

struct IsVisible : Hook<IsVisible, "SBApplicationIcon", "isVisible", bool()> {
    static bool replacement(const id& self, SEL cmd)
    {
        return !isHidden(asString(ask<"applicationBundleIdentifier">(self))) && original(self, cmd);
    }
};

struct InfoIsHidden : Hook<InfoIsHidden, "SBApplicationInfo", "isHidden", bool()> {
    static bool replacement(const id& self, SEL cmd) { return isHiddenApplication(self) || original(self, cmd); }
};

struct Tags : Hook<Tags, "SBApplicationInfo", "tags", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        id tags = original(self, cmd);
        const auto present = asArray(tags);
        if (!isHiddenApplication(self) || (tags && !present) || (present && present->contains("hidden")))
            return tags;
        const auto items = itemsOf(tags);
        std::vector<id> extended(items.begin(), items.end());
        extended.push_back(string("hidden"));
        return array(std::move(extended));
    }
};

struct ApplicationIsHidden : Hook<ApplicationIsHidden, "SBApplication", "isHidden", bool()> {
    static bool replacement(const id& self, SEL cmd) { return isHiddenApplication(self) || original(self, cmd); }
};

constexpr HookRow rows[] {
    IsIconVisible::row(),
    VisibleIconIdentifiers::row(),
    IsVisible::row(),
    InfoIsHidden::row(),
    Tags::row(),
    ApplicationIsHidden::row(),
};

} // namespace

const HookGroup HiddenAppHooks { "HiddenAppHooks", rows };

} // namespace appledger
