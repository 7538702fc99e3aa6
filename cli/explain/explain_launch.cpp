#include "cli/explain/explain_launch.h"

#include "cli/explain/explain_record.h"
#include "core/policies.h"
#include "phone/process/process_definition.h"
#include "platform/runtime/class_definition.h"

#include <algorithm>
#include <vector>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

constexpr std::string_view spotlightPrefix = "Spotlight ";

bool isSpotlightRoad(LaunchRoad road)
{
    return road == LaunchRoad::SpotlightOpenServiceWithPort || road == LaunchRoad::SpotlightOpenService
        || road == LaunchRoad::SpotlightWorkspace;
}

bool isSwitcherRoad(LaunchRoad road)
{
    return road == LaunchRoad::Switcher || road == LaunchRoad::SwitcherWithModifiers;
}

std::string methodName(const LaunchRoadTraits& road)
{
    return std::string(road.className).append(" ").append(road.selector);
}

/// The strings of an array; as in a policy cache, what isn't an array lists nothing and what isn't a string is
/// no identifier.
std::vector<std::string_view> identifiersOf(const Json& value)
{
    std::vector<std::string_view> identifiers;
    if (value.is_array())
        for (const Json& item : value)
            if (item.is_string())
                identifiers.emplace_back(item.get_ref<const std::string&>());
    return identifiers;
}

/// One list as a process has it: its own, where the record says what it read, else the policies'.
class ProcessList {
public:
    ProcessList(const ExplainList& policy, const Json* cached, std::string_view key)
        : policy_(policy)
    {
        if (!cached)
            return;
        if (const auto own = cached->find(key); own != cached->end())
            own_ = identifiersOf(*own);
    }

    IdentifierList list() const { return own_ ? IdentifierList(*own_) : policy_.list(); }

private:
    const ExplainList& policy_;
    std::optional<std::vector<std::string_view>> own_;
};

ExplainedLaunch carriedOut(const LaunchVerdict& verdict, const LaunchRoadTraits& road)
{
    ExplainedLaunch explained { .road = &road, .outcome = verdict.outcome };
    if (verdict.outcome == LaunchOutcome::Open)
        return explained;
    explained.identifier = verdict.identifier;
    explained.key = verdict.key;
    if (road.givesReason)
        explained.reason = verdict.reason();
    explained.hasHaptic = road.hasHaptic;
    return explained;
}

/// The card of the record, if it has one.
std::optional<std::vector<std::string_view>> readLayout(RecordReader& reader, const Json& record)
{
    const auto layout = record.find("layout");
    if (layout == record.end() || layout->is_null())
        return std::nullopt;
    auto identifiers = identifiersOf(*layout);
    if (!layout->is_array() || identifiers.size() != layout->size())
        reader.fail("\"layout\" is an array of texts or null");
    return identifiers;
}

std::string_view outcomeName(LaunchOutcome outcome)
{
    switch (outcome) {
    case LaunchOutcome::Open:
        return "open";
    case LaunchOutcome::Stop:
        return "stop";
    case LaunchOutcome::Prompt:
        return "prompt";
    }
    return "";
}

} // namespace

std::string roadName(const LaunchRoadTraits& road)
{
    return (isSpotlightRoad(road.road) ? std::string(spotlightPrefix) : "") + methodName(road);
}

const LaunchRoadTraits* roadNamed(std::string_view name)
{
    const bool saysSpotlight = name.starts_with(spotlightPrefix);
    if (saysSpotlight)
        name.remove_prefix(spotlightPrefix.size());
    const auto found = std::ranges::find_if(launchRoads(), [&](const LaunchRoadTraits& road) {
        return methodName(road) == name && (!saysSpotlight || isSpotlightRoad(road.road));
    });
    return found == launchRoads().end() ? nullptr : &*found;
}

bool roadExists(const LaunchRoadTraits& road, const platform::SystemVersion& version)
{
    const auto isMethod = [&](const platform::MethodDefinition& method) {
        return method.selector == road.selector && method.versions.contains(version.major);
    };
    const auto hasMethod = [&](const platform::ClassDefinition* cls) {
        return cls->name == road.className && cls->versions.contains(version.major)
            && std::ranges::any_of(cls->methods, isMethod);
    };
    const phone::ProcessDefinition* const process
        = phone::processDefinition(isSpotlightRoad(road.road) ? "Spotlight" : "SpringBoard");
    return std::ranges::any_of(phone::classesOfProcess(process->name, process->bundleIdentifier), hasMethod);
}

ExplainedLaunch explainLaunch(const Json& record, const ExplainPolicies& policies)
{
    RecordReader reader(record);
    const auto wanted = reader.text("road");
    const LaunchRoadTraits* const road = wanted ? roadNamed(*wanted) : nullptr;
    if (!road)
        reader.fail(wanted ? "there is no road \"" + std::string(*wanted) + "\"" : "\"road\" is a text");
    const auto identifier = reader.text("bundleIdentifier");
    const auto bypass = reader.text("bypass");
    const Json* const cached = reader.object("cached");
    if (!reader.error().empty())
        return { .error = reader.error() };
    const auto layout = readLayout(reader, record);
    if (!reader.error().empty())
        return { .error = reader.error() };

    const ProcessList requireAuth(policies.requireAuth, cached, policy::requireAuth.key);
    const ProcessList blocked(
        policies.blocked, road->blockedList == BlockedListSource::Cache ? cached : nullptr, policy::blockedLaunch.key);
    const ProcessList hidden(policies.hidden, cached, policy::hidden.key);
    const LaunchLists lists { requireAuth.list(), blocked.list(),
        isSpotlightRoad(road->road) ? IdentifierList() : hidden.list(), bypass };
    if (isSwitcherRoad(road->road)) {
        const auto holds = [&layout](std::string_view application) {
            return layout && std::ranges::find(*layout, application) != layout->end();
        };
        return carriedOut(decideSwitcherLaunch(holds, lists), *road);
    }
    return carriedOut(identifier ? decideLaunch(*identifier, lists) : LaunchVerdict {}, *road);
}

Json launchVerdictObject(const ExplainedLaunch& explained)
{
    if (!explained.error.empty())
        return { { "error", explained.error } };
    return { { "outcome", outcomeName(explained.outcome) },
        { "prompts", explained.outcome == LaunchOutcome::Prompt ? Json(explained.identifier) : Json(nullptr) },
        { "reason", explained.reason.empty() ? Json(nullptr) : Json(explained.reason) },
        { "haptic", explained.hasHaptic } };
}

std::string describeLaunchVerdict(const ExplainedLaunch& explained)
{
    std::string text = roadName(*explained.road) + " → ";
    switch (explained.outcome) {
    case LaunchOutcome::Open:
        return text + "opens.";
    case LaunchOutcome::Stop:
        text += "stopped";
        break;
    case LaunchOutcome::Prompt:
        text += "prompts for " + explained.identifier;
        break;
    }
    if (explained.hasHaptic)
        text += ", with a haptic";
    if (!explained.reason.empty())
        text += ", declined with \"" + explained.reason + "\"";
    return text + ": " + explained.key + " lists " + explained.identifier + ".";
}

} // namespace cli
