#include "core/preference_domain.h"

#include "core/notification_names.h"
#include "platform/foundation/values.h"

#include <cerrno>

namespace appledger {

namespace {

using enum PreferenceType;

constexpr PreferenceKey keys[] {
    { "ALBlockedNotifications", IdentifierList, "empty", notification::notificationsChanged },
    { "ALMutedNotifications", IdentifierList, "empty", notification::notificationsMutedChanged },
    { "ALBlockedLaunchApps", IdentifierList, "empty", notification::launchBlockedChanged },
    { "ALBlockedUninstallApps", IdentifierList, "empty", notification::uninstallBlockedChanged },
    { "ALBlockedUpdateApps", IdentifierList, "empty", notification::updateBlockedChanged },
    { "ALAutoClearCacheApps", IdentifierList, "empty", notification::autoClearChanged },
    { "GlobalAutoClearCacheEnabled", Boolean, "false", notification::autoClearChanged },
    { "ALHiddenApps", IdentifierList, "empty", notification::hiddenChanged },
    { "ALRequireAuthApps", IdentifierList, "empty", notification::requireAuthChanged },
    { "ALKeepAwakeApps", IdentifierList, "empty", notification::keepAwakeChanged },
    { "ALCustomBadges", NumberTable, "none", notification::badgeChanged },
    { "ALRealBadges", NumberTable, "none", "" },
    { "ALIsPanelModifying", Boolean, "false", "" },
    { "RunningIndicatorEnabled", Boolean, "false", notification::runningIndicatorChanged },
    { "RunningIndicatorColor", String, "#AF52DE", notification::runningIndicatorChanged },
    { "ALImmortalEnabled", Boolean, "true", notification::immortalizerChanged },
    { "ALImmortalIndicatorEnabled", Boolean, "true", notification::immortalizerChanged },
    { "ALImmortalToastEnabled", Boolean, "true", notification::immortalizerChanged },
    { "ALImmortalLockIndicatorEnabled", Boolean, "true", notification::immortalizerChanged },
    { "ALImmortalForegroundApps", IdentifierList, "empty", notification::immortalizerChanged },
    { "ALImmortalLockedApps", IdentifierList, "empty", notification::immortalizerChanged },
    { "ALImmortalNotifApps", IdentifierList, "empty", notification::immortalizerChanged },
    { "IsBlockedFromLaunchingOthers/", Boolean, "false", notification::redirectSaved, true },
    { "IsBlockedFromBeingLaunched/", Boolean, "false", notification::redirectSaved, true },
    { "IsBlockedFromLaunchingAppStore/", Boolean, "false", notification::redirectSaved, true },
    { "IsBlockedFromLaunchingSafari/", Boolean, "false", notification::redirectSaved, true },
    { "ShouldTeardownAutomatically/", Boolean, "false", notification::redirectSaved, true },
    { "ShouldSimulateSuccess/", Boolean, "false", notification::redirectSaved, true },
    { "CustomBypassedApplications/", IdentifierList, "empty", notification::redirectSaved, true },
    { "CustomBlockedApplications/", IdentifierList, "empty", notification::redirectSaved, true },
    { "ALLastModifiedIconBundleID", String, "none", notification::clearCache },
    { "ALLanguage", String, "none: the device's language", "" },
    { "ALOffloadModeEnabled", Boolean, "false", "" },
    { "ALFeatureListItems", RowList, "built by the panel", "" },
    { "ALActionBarItems", RowList, "built by the panel", "" },
    { "CustomAppNames", StringTable, "none", "" },
    { "SwipeUpEnabled", Boolean, "true", "" },
    { "SwipeDownEnabled", Boolean, "false", "" },
    { "ForceTouchMenuEnabled", Boolean, "false", "" },
    { "HidePanelSeparatorsEnabled", Boolean, "false", "" },
    { "kAppearance", Integer, "0", "" },
    { "DirectoryOpener", String, "filza", "" },
};

} // namespace

std::span<const PreferenceKey> preferenceKeys() noexcept
{
    return keys;
}

const PreferenceKey* preferenceKey(std::string_view key) noexcept
{
    for (const PreferenceKey& row : keys) {
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

} // namespace appledger
