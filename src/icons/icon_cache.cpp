#include "icons/icon_cache.h"

#include "core/policies.h"
#include "icons/identifier_table.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/files.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

// Touched from the notification and from whatever thread draws.
IdentifierTable<bool> g_customIconPresence;
IdentifierTable<unsigned long> g_bundleTokens;

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
    return std::string(customIconDirectory).append("/").append(bundleIdentifier).append(".png");
}

std::optional<std::string> ALCustomIconPathIfExists(std::string_view bundleIdentifier)
{
    auto path = ALCustomIconFilePath(bundleIdentifier);
    if (!path)
        return std::nullopt;
    auto exists = g_customIconPresence.find(bundleIdentifier);
    if (!exists) {
        exists = fileExists(*path);
        g_customIconPresence.set(bundleIdentifier, *exists);
    }
    return *exists ? path : std::nullopt;
}

std::optional<bool> knownCustomIconPresence(std::string_view bundleIdentifier)
{
    return g_customIconPresence.find(bundleIdentifier);
}

std::string ALGetCacheToken(std::string_view bundleIdentifier)
{
    return std::to_string(g_bundleTokens.find(bundleIdentifier).value_or(0));
}

void ALInvalidateCustomIconPresence(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        g_customIconPresence.removeAll();
    else
        g_customIconPresence.remove(bundleIdentifier);
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
    g_bundleTokens.set(*identifier, g_bundleTokens.find(*identifier).value_or(0) + 1);
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
