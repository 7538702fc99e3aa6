#include "core/preference_domain.h"

#include "core/policies.h"
#include "platform/foundation/values.h"

#include <cerrno>

namespace appledger {

std::span<const PreferenceKey> preferenceKeys() noexcept
{
    return preferenceTable;
}

const PreferenceKey* preferenceKey(std::string_view key) noexcept
{
    for (const PreferenceKey& row : preferenceTable) {
        const std::string_view bare = row.name.substr(0, row.name.size() - (row.isPrefix ? 1 : 0));
        if (key == bare || (row.isPrefix && key.starts_with(row.name)))
            return &row;
    }
    return nullptr;
}

platform::Ref<platform::NSUserDefaults> synchronizedPreferences()
{
    auto defaults = preferences();
    defaults->synchronize();
    return defaults;
}

namespace {

using namespace platform;

WriteOutcome refusedType(std::string_view key, std::string_view wanted)
{
    return { EINVAL, std::string(key) + " holds something that isn't " + std::string(wanted) };
}

} // namespace

PreferenceChange changePreferenceList(std::string_view key, ListChange change, std::string_view identifier)
{
    std::optional<ChangedList> changed;
    WriteOutcome outcome = preferences()->change(key, [&](const id& present) -> std::optional<id> {
        changed = changedList(present, change, identifier);
        return changed ? std::optional(changed->list) : std::nullopt;
    });
    if (outcome.isDone() && !changed)
        return { refusedType(key, "a list") };
    return { std::move(outcome), changed && changed->isListed };
}

PreferenceChange changePreferenceFlag(std::string_view key, ListChange change)
{
    bool isFlag = true;
    bool isWanted = change == ListChange::Add;
    WriteOutcome outcome = preferences()->change(key, [&](const id& present) -> std::optional<id> {
        isFlag = !present || numberKind(present) || asString(present);
        if (change == ListChange::Toggle)
            isWanted = !boolValue(present);
        return isFlag ? std::optional(boolean(isWanted)) : std::nullopt;
    });
    if (outcome.isDone() && !isFlag)
        return { refusedType(key, "a flag") };
    return { std::move(outcome), isWanted };
}

void changePreference(NSUserDefaults& preferences, std::string_view key, const NSUserDefaults::Change& change)
{
    if (preferences.change(key, change).isDone())
        return;
    if (const auto value = change(preferences.objectForKey(key)))
        preferences.setObject(*value, key);
}

} // namespace appledger
