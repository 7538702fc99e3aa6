#include "core/badges.h"

#include "core/preference_domain.h"
#include "platform/foundation/values.h"

namespace appledger {

using namespace platform;

namespace {

enum class Entry { Set, SetFirst };

void store(NSUserDefaults& preferences, std::string_view key, const id& bundleIdentifier, const id& badge, Entry entry)
{
    const auto identifier = asString(bundleIdentifier);
    if (!identifier)
        return;
    changePreference(preferences, key, [&](const id& present) -> std::optional<id> {
        if (entry == Entry::SetFirst && badgeIn(present, bundleIdentifier))
            return std::nullopt;
        return dictionaryBySetting(present, *identifier, badge);
    });
}

} // namespace

id badgeIn(const id& table, const id& bundleIdentifier)
{
    const auto badges = asDictionary(table);
    id badge = badges ? (*badges)[bundleIdentifier] : nil;
    return numberKind(badge) || asString(badge) ? badge : nil;
}

void storeBadge(NSUserDefaults& preferences, std::string_view key, const id& bundleIdentifier, const id& badge)
{
    store(preferences, key, bundleIdentifier, badge, Entry::Set);
}

void storeFirstBadge(NSUserDefaults& preferences, std::string_view key, const id& bundleIdentifier, const id& badge)
{
    store(preferences, key, bundleIdentifier, badge, Entry::SetFirst);
}

} // namespace appledger
