#include "entry/load_plan.h"

#include "core/policies.h"
#include "entry/hook_groups.h"
#include "entry/observers.h"
#include "entry/process_role.h"
#include "launch/redirect_rules.h"
#include "platform/darwin/notify.h"
#include "state/app_brightness_manager.h"
#include "state/app_idle_timer_manager.h"
#include "state/app_mute_manager.h"

#include <algorithm>
#include <span>

namespace appledger {

using namespace platform;

namespace {

struct NamedStep {
    std::string_view name;
    void (*run)();
    std::string_view fills {}; ///< by its reload name, the policy whose caches it fills
    std::string_view fillsToo {};
};

template <const Policy& Row, void (*Reload)() = reload<Row>> consteval NamedStep load()
{
    return { Row.reloadName, Reload, Row.reloadName, Row.also };
}

constexpr NamedStep storeCaches[] { load<policy::blockedUpdate>() };

constexpr NamedStep springBoardCaches[] {
    load<policy::blockedNotifications>(),
    load<policy::blockedLaunch>(),
    load<policy::blockedUninstall>(),
    load<policy::autoClear>(),
    load<policy::hidden>(),
    load<policy::customBadges>(),
    load<policy::requireAuth>(),
    load<policy::runningIndicator>(),
    load<policy::redirect, ReloadRedirectPrefs>(),
    load<policy::immortalizer>(),
};

// Spotlight decides on what it reads here until it is restarted: it has no observers for these lists, and
// no list of hidden applications.
constexpr NamedStep spotlightCaches[] { load<policy::blockedLaunch>(), load<policy::requireAuth>() };

constexpr NamedStep springBoardSingletons[] {
    { "AppMuteManager", [] { AppMuteManager::sharedManager(); } },
    { "AppBrightnessManager", [] { AppBrightnessManager::sharedManager(); } },
    { "AppIdleTimerManager", [] { AppIdleTimerManager::sharedManager(); }, policy::keepAwake.reloadName },
};

constexpr bool isLoaded(std::string_view reloadName)
{
    const auto fills
        = [reloadName](const NamedStep& step) { return step.fills == reloadName || step.fillsToo == reloadName; };
    return std::ranges::any_of(storeCaches, fills) || std::ranges::any_of(springBoardCaches, fills)
        || std::ranges::any_of(springBoardSingletons, fills);
}

static_assert(std::ranges::all_of(preferenceTable,
                  [](const PreferenceKey& key) { return key.reloadName.empty() || isLoaded(key.reloadName); }),
    "a key in the table belongs to a policy that no process loads");

constexpr std::string_view storeClasses[] { "ASDPurchaseRequest", "ASDJobManager", "ASDPurchaseManager",
    "SKUIItemStateCenter", "ASDApp" };

class Planner {
public:
    explicit Planner(const LoadFacts& facts)
        : facts_(facts)
    {
    }

    void add(LoadStepKind kind, std::span<const NamedStep> named)
    {
        for (const NamedStep& step : named)
            steps_.push_back({ kind, step.name, step.run });
    }

    void addObservers(ObserverRole role)
    {
        for (const Observer& observer : observers())
            if (observer.role == role)
                steps_.push_back(
                    { LoadStepKind::AddObserver, observer.callbackName, observer.callback, observer.notification });
    }

    void install(const HookGroup& group)
    {
        steps_.push_back({ .kind = LoadStepKind::InstallGroup, .name = group.name, .group = &group });
    }

    bool hasClass(std::string_view name) const { return facts_.hasClass(name); }

    std::vector<LoadStep> steps() && { return std::move(steps_); }

private:
    const LoadFacts& facts_;
    std::vector<LoadStep> steps_;
};

} // namespace

std::vector<LoadStep> planLoad(const LoadFacts& facts)
{
    const ProcessRole role = processRole(facts.process);
    Planner planner(facts);
    const auto hasClass = [&planner](std::string_view name) { return planner.hasClass(name); };

    planner.addObservers(ObserverRole::EveryProcess);
    if (role.isStore()) {
        planner.add(LoadStepKind::LoadCache, storeCaches);
        planner.addObservers(ObserverRole::Store);
        if (std::ranges::any_of(storeClasses, hasClass))
            planner.install(AppStoreUpdateHooks);
    }
    if (role.isSpringBoard) {
        planner.add(LoadStepKind::LoadCache, springBoardCaches);
        planner.add(LoadStepKind::CreateSingleton, springBoardSingletons);
        planner.addObservers(ObserverRole::SpringBoard);
        for (const HookGroup* group : springBoardGroups())
            planner.install(*group);
    }
    if (role.isSpotlight) {
        planner.add(LoadStepKind::LoadCache, spotlightCaches);
        planner.install(SpotlightHooks);
    }
    if (hasClass("UIImage"))
        planner.install(GlobalIconHooks);
    if (hasClass("SearchUIAppIconImage") || hasClass("SBIconImageView"))
        planner.install(SearchUIHooks);
    if (facts.process.version >= SystemVersion { 15, 0, 0 } && hasClass("NCNotificationRequestContentProvider"))
        planner.install(NotificationHooks_iOS15);
    return std::move(planner).steps();
}

void carryOut(const std::vector<LoadStep>& steps)
{
    for (const LoadStep& step : steps) {
        switch (step.kind) {
        case LoadStepKind::LoadCache:
        case LoadStepKind::CreateSingleton:
            step.run();
            break;
        case LoadStepKind::AddObserver:
            CFNotificationCenterAddObserver(
                step.run, step.notification, CFNotificationSuspensionBehavior::DeliverImmediately);
            break;
        case LoadStepKind::InstallGroup:
            installHookGroup(*step.group);
            break;
        }
    }
}

} // namespace appledger
