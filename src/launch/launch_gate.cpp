#include "launch/launch_gate.h"

#include "core/haptics.h"
#include "core/policies.h"
#include "launch/authentication_gate.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

/// The lists as one road reads them, held in place for one decision.
class RoadLists {
public:
    explicit RoadLists(BlockedListSource source)
        : fresh_(source == BlockedListSource::Cache ? nil : freshBlockedList(source))
        , readsCache_(source == BlockedListSource::Cache)
    {
    }

    LaunchLists lists() const
    {
        const std::string* const bypass = g_authBypassAppId.load();
        return { requireAuth_.list(), readsCache_ ? blocked_.list() : fresh_.list(), hidden_.list(),
            bypass ? std::optional<std::string_view>(*bypass) : std::nullopt };
    }

private:
    static id freshBlockedList(BlockedListSource source)
    {
        const auto defaults
            = source == BlockedListSource::FreshSynchronized ? synchronizedPreferences() : preferences();
        return defaults->objectForKey(policy::blockedLaunch.key);
    }

    const IdentifierArray fresh_;
    const bool readsCache_;
    const PolicyCache::Reading requireAuth_ = g_requireAuthApps.read();
    const PolicyCache::Reading blocked_ = g_blockedLaunchApps.read();
    const PolicyCache::Reading hidden_ = g_hiddenApps.read();
};

bool carryOut(const LaunchVerdict& verdict, const LaunchRoadTraits& road, const id& request)
{
    if (verdict.outcome == LaunchOutcome::Open)
        return false;
    if (road.hasHaptic)
        playImpactHaptic();
    if (road.givesReason)
        ask<"declineWithReason:", void>(request, string(verdict.reason()));
    if (verdict.outcome == LaunchOutcome::Prompt)
        ALPromptAuthAndLaunchApp(verdict.identifier);
    return true;
}

} // namespace

bool launchIsStopped(const std::optional<StringValue>& identifier, LaunchRoad road, const id& request)
{
    if (!identifier)
        return false;
    const LaunchRoadTraits& roadTraits = traits(road);
    const RoadLists lists(roadTraits.blockedList);
    return carryOut(decideLaunch(*identifier, lists.lists()), roadTraits, request);
}

bool switcherLaunchIsStopped(const std::function<bool(std::string_view)>& holds, LaunchRoad road)
{
    const LaunchRoadTraits& roadTraits = traits(road);
    const RoadLists lists(roadTraits.blockedList);
    return carryOut(decideSwitcherLaunch(holds, lists.lists()), roadTraits, nil);
}

} // namespace appledger
