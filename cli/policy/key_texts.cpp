#include "cli/policy/key_texts.h"

#include "core/policies.h"
#include "entry/load_plan.h"
#include "phone/process/process_definition.h"

#include <algorithm>
#include <utility>

namespace cli {

using namespace appledger;

namespace {

constexpr std::pair<std::string_view, std::string_view> texts[] {
    { policy::blockedNotifications.key, "notifications of these applications are dropped" },
    { policy::mutedNotifications.key, "notifications of these applications arrive without a sound and an alert" },
    { policy::blockedLaunch.key, "these applications don't open" },
    { policy::blockedUninstall.key, "these applications can't be removed" },
    { policy::blockedUpdate.key, "the store neither shows nor installs updates of these applications" },
    { policy::autoClear.key, "the caches of these applications are cleared at each exit" },
    { preference::everyCacheClears, "the caches of all applications are cleared at each exit" },
    { policy::hidden.key, "these applications are off the Home Screen, don't open and don't notify" },
    { policy::requireAuth.key, "these applications open after authentication alone" },
    { policy::keepAwake.key, "the screen stays on while one of these applications is in front" },
    { preference::customBadges, "the badges that the owner has chosen, by application" },
    { preference::realBadges, "the badges that the system would show, by application; the phone's own state" },
    { preference::isPanelModifying, "whether a badge is being changed just now; the phone's own state" },
    { preference::runningIndicator, "whether the icon of a running application has a dot" },
    { preference::runningIndicatorColor, "the colour of that dot" },
    { "ALImmortalEnabled", "whether applications can be kept running at all" },
    { "ALImmortalIndicatorEnabled", "whether the icons of those that are kept running show it" },
    { "ALImmortalToastEnabled", "whether a toast says that one is kept running" },
    { "ALImmortalLockIndicatorEnabled", "whether the switcher shows which can't be killed" },
    { "ALImmortalForegroundApps", "these applications keep running in the background" },
    { "ALImmortalLockedApps", "the switcher doesn't kill these applications" },
    { "ALImmortalNotifApps", "these applications notify while they are kept running" },
    { redirectKey::forbiddenSource, "the application opens no other one" },
    { redirectKey::forbiddenDestination, "no other application opens this one" },
    { redirectKey::forbiddenSourceForAppStore, "the application doesn't lead to the App Store" },
    { redirectKey::forbiddenSourceForSafari, "the application doesn't lead to Safari" },
    { redirectKey::lenientSource, "the rules on what the application opens are lifted 10 seconds after its launch" },
    { redirectKey::simulatedSource, "the application is told that what was refused has opened" },
    { redirectKey::allowedSources, "these applications may open the key's, whatever else forbids it" },
    { redirectKey::forbiddenDestinations, "the key's application doesn't open these" },
    { preference::lastModifiedIcon, "whose icon was changed last, until it is drawn anew; the phone's own state" },
    { preference::language, "the language of the panel's texts" },
    { "ALOffloadModeEnabled", "whether the panel removes applications and keeps their data" },
    { "ALFeatureListItems", "the rows of the panel's list of features, in their order" },
    { "ALActionBarItems", "the panel's buttons, in their order; it shows the first six" },
    { preference::customNames, "the names that the owner has given, by application" },
    { preference::swipeUp, "whether a swipe up on an icon opens the panel" },
    { preference::swipeDown, "whether a swipe down on an icon opens the panel" },
    { preference::forceTouchMenu, "whether an icon's menu has the panel" },
    { preference::hideSeparators, "whether the panel's lists have no lines between their rows" },
    { preference::appearance, "whether the panel is dark, light, or as the system" },
    { preference::directoryOpener, "the file manager in which folders open" },
};

constexpr std::string_view states[] { preference::realBadges, preference::isPanelModifying,
    preference::lastModifiedIcon };

/// At each use, with no copy at load.
constexpr std::pair<std::string_view, std::string_view> readAtUse[] {
    { policy::blockedUpdate.key, "AppStore" },
    { policy::blockedUpdate.key, "appstored" },
    { policy::blockedUpdate.key, "itunesstored" },
};

bool loads(const phone::ProcessDefinition& process, const PreferenceKey& key)
{
    const LoadFacts facts { { std::string(process.bundleIdentifier), std::string(process.name), { 16, 0, 0 } },
        [](std::string_view) { return true; } };
    const auto plan = planLoad(facts);
    return std::ranges::any_of(plan, [&key](const LoadStep& step) {
        const bool isReload = step.kind == LoadStepKind::LoadCache && step.name == key.reloadName;
        // It has no step of its own: its manager reads it.
        const bool isManager = key.name == policy::keepAwake.key && step.name == "AppIdleTimerManager";
        const bool isWithAnother = key.name == policy::mutedNotifications.key && step.kind == LoadStepKind::LoadCache
            && step.name == policy::blockedNotifications.reloadName;
        return isReload || isManager || isWithAnother;
    });
}

} // namespace

std::string_view keyText(const PreferenceKey& key)
{
    const auto found = std::ranges::find(texts, key.name, &std::pair<std::string_view, std::string_view>::first);
    return found == std::end(texts) ? "" : found->second;
}

bool isStateOfThePhone(std::string_view key)
{
    return std::ranges::find(states, key) != std::end(states);
}

std::vector<std::string> readersOf(const PreferenceKey& key)
{
    std::vector<std::string> readers;
    for (const phone::ProcessDefinition& process : phone::processDefinitions()) {
        const bool readsAtUse = std::ranges::find(readAtUse, std::pair(key.name, process.name)) != std::end(readAtUse);
        // What nobody keeps a copy of is read by SpringBoard, where the panel and the icons are.
        const bool isOfSpringBoard = key.reloadName.empty() && process.name == "SpringBoard";
        if (isOfSpringBoard || readsAtUse || (!key.reloadName.empty() && loads(process, key)))
            readers.emplace_back(process.name);
    }
    return readers;
}

} // namespace cli
