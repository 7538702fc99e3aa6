#include "icons/icon_cache.h"

#include "core/policies.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/files.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/runtime/reclamation.h"

#include <map>

namespace appledger {

using namespace platform;

namespace {

template <class T> using ByIdentifier = std::map<std::string, T, std::less<>>;

// Replaced whole, like every cache: they are touched from the notification and from whatever thread draws.
Published<ByIdentifier<bool>> g_customIconPresence;
Published<ByIdentifier<unsigned long>> g_bundleTokens;

template <class T> std::optional<T> find(const Published<ByIdentifier<T>>& table, std::string_view identifier)
{
    const ReadSection section;
    const ByIdentifier<T>* const present = table.load();
    if (!present)
        return std::nullopt;
    const auto found = present->find(identifier);
    return found == present->end() ? std::nullopt : std::optional<T>(found->second);
}

template <class T> ByIdentifier<T> copyOf(const Published<ByIdentifier<T>>& table)
{
    const ReadSection section;
    const ByIdentifier<T>* const present = table.load();
    return present ? *present : ByIdentifier<T>();
}

template <class T> void set(Published<ByIdentifier<T>>& table, std::string_view identifier, T value)
{
    ByIdentifier<T> changed = copyOf(table);
    changed.insert_or_assign(std::string(identifier), value);
    table.assign(new ByIdentifier<T>(std::move(changed)));
}

void refreshSystemIconCaches()
{
    const id searchCache = askObject<"sharedCache">(id(NSClassFromString("SearchUIImageCache")));
    ask<"clearImagesWithNotification:", void>(searchCache, nil);
    ask<"removeAllObjects", void>(askObject<"imageCache">(searchCache));

    ask<"clear", void>(askObject<"sharedCache">(id(NSClassFromString("ISIconCache"))));

    const id controller = askObject<"sharedInstance">(id(NSClassFromString("SBIconController")));
    const id imageCache = askObject<"iconImageCache">(askObject<"iconManager">(controller));
    ask<"purgeAllCachedImages", void>(imageCache);

    postLocalNotification(notification::forceRefreshIcons);
}

} // namespace

std::optional<std::string> ALCustomIconFilePath(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return std::nullopt;
    return "/var/mobile/Library/Preferences/AppLedgerIcons/" + std::string(bundleIdentifier) + ".png";
}

std::optional<std::string> ALCustomIconPathIfExists(std::string_view bundleIdentifier)
{
    auto path = ALCustomIconFilePath(bundleIdentifier);
    if (!path)
        return std::nullopt;
    auto exists = find(g_customIconPresence, bundleIdentifier);
    if (!exists) {
        exists = fileExists(*path);
        set(g_customIconPresence, bundleIdentifier, *exists);
    }
    return *exists ? path : std::nullopt;
}

std::string ALGetCacheToken(std::string_view bundleIdentifier)
{
    return std::to_string(find(g_bundleTokens, bundleIdentifier).value_or(0));
}

void ALInvalidateCustomIconPresence(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty()) {
        g_customIconPresence.assign(nullptr);
        return;
    }
    ByIdentifier<bool> changed = copyOf(g_customIconPresence);
    if (const auto known = changed.find(bundleIdentifier); known != changed.end())
        changed.erase(known);
    g_customIconPresence.assign(new ByIdentifier<bool>(std::move(changed)));
}

NSCache& ALGetImageCache()
{
    static NSCache* const cache = [] {
        auto created = make<NSCache>();
        created->setCountLimit(1500);
        return created.leak();
    }();
    return *cache;
}

void ALClearSpecificIconCache()
{
    const auto defaults = preferences();
    const auto identifier = asString(defaults->objectForKey(preference::lastModifiedIcon));
    if (!identifier || identifier->empty()) {
        ALGetImageCache().removeAllObjects();
        ALInvalidateCustomIconPresence({});
        return;
    }
    set(g_bundleTokens, *identifier, find(g_bundleTokens, *identifier).value_or(0) + 1);
    ALInvalidateCustomIconPresence(*identifier);
    // One that was handed over meanwhile is for the next post.
    (void)defaults->change(preference::lastModifiedIcon, [&](const id& present) -> std::optional<id> {
        return isEqual(present, identifier->object()) ? std::optional(nil) : std::nullopt;
    });
}

void ALForceRefreshIconsCallback()
{
    dispatch_async(dispatch_get_main_queue(), [] {
        try {
            refreshSystemIconCaches();
        } catch (const std::exception&) {
            // Raised by one of the system's caches: the steps behind it are left out.
        }
    });
}

} // namespace appledger
