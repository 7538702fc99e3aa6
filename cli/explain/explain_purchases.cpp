#include "cli/explain/explain_purchases.h"

#include "cli/explain/explain_record.h"
#include "core/policies.h"

#include <algorithm>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

std::string_view outcomeName(StoreOutcome outcome)
{
    switch (outcome) {
    case StoreOutcome::Pass:
        return "pass";
    case StoreOutcome::Shrink:
        return "shrink";
    case StoreOutcome::Refuse:
        return "refuse";
    }
    return "";
}

std::string refusalText(StoreRefusal refusal)
{
    const std::string error = std::string(blockedErrorDomain) + " " + std::to_string(blockedErrorCode) + " \""
        + std::string(blockedErrorText) + "\"";
    switch (refusal) {
    case StoreRefusal::AnswersFalse:
        return "false";
    case StoreRefusal::AnswersNil:
        return "nil";
    case StoreRefusal::CompletesWithFalseAndError:
        return "completion (false, " + error + ")";
    case StoreRefusal::CompletesWithNilAndError:
        return "completion (nil, " + error + ")";
    case StoreRefusal::CompletesWithNil:
        return "completion (nil)";
    }
    return "";
}

std::vector<std::optional<std::string_view>> readIdentifiers(RecordReader& reader, const Json& record)
{
    std::vector<std::optional<std::string_view>> identifiers;
    const auto found = record.find("identifiers");
    if (found == record.end() || !found->is_array()) {
        reader.fail("\"identifiers\" is an array of texts or nulls");
        return identifiers;
    }
    for (const Json& item : *found) {
        if (item.is_string())
            identifiers.emplace_back(item.get_ref<const std::string&>());
        else if (item.is_null())
            identifiers.emplace_back(std::nullopt);
        else
            reader.fail("\"identifiers\" is an array of texts or nulls");
    }
    return identifiers;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string list;
    for (const std::string& text : texts)
        list.append(list.empty() ? "" : ", ").append(text);
    return list;
}

} // namespace

std::string roadName(const StoreRoadTraits& road)
{
    return std::string(road.className).append(" ").append(road.selector);
}

const StoreRoadTraits* storeRoadFrom(std::string_view name)
{
    const auto found
        = std::ranges::find_if(storeRoads(), [&name](const StoreRoadTraits& road) { return roadName(road) == name; });
    return found == storeRoads().end() ? nullptr : &*found;
}

ExplainedPurchase explainPurchase(const Json& record, const ExplainPolicies& policies)
{
    RecordReader reader(record);
    const auto wanted = reader.text("road");
    const StoreRoadTraits* const road = wanted ? storeRoadFrom(*wanted) : nullptr;
    if (!road)
        reader.fail(wanted ? "there is no road \"" + std::string(*wanted) + "\"" : "\"road\" is a text");
    if (!reader.error().empty())
        return { .error = reader.error() };
    const auto identifiers = readIdentifiers(reader, record);
    if (!road->takesSeveral && identifiers.size() != 1)
        reader.fail("the road takes one identifier");
    if (!reader.error().empty())
        return { .error = reader.error() };

    const StoreVerdict verdict = decideStore(identifiers, policies.updateBlocked.list());
    ExplainedPurchase explained { .road = road, .outcome = verdict.outcome };
    for (std::size_t index = 0; index < identifiers.size(); ++index) {
        if (verdict.kept[index])
            explained.kept.emplace_back(identifiers[index]);
        else
            explained.refused.emplace_back(*identifiers[index]);
    }
    return explained;
}

Json purchaseVerdictObject(const ExplainedPurchase& explained)
{
    if (!explained.error.empty())
        return { { "error", explained.error } };
    Json kept = Json::array();
    for (const auto& identifier : explained.kept)
        kept.push_back(identifier ? Json(*identifier) : Json(nullptr));
    return { { "outcome", outcomeName(explained.outcome) }, { "kept", kept }, { "refused", explained.refused },
        { "answer",
            explained.outcome == StoreOutcome::Refuse ? Json(refusalText(explained.road->refusal)) : Json(nullptr) },
        { "rule", explained.outcome == StoreOutcome::Pass ? Json(nullptr) : Json(policy::blockedUpdate.key) } };
}

std::string describePurchaseVerdict(const ExplainedPurchase& explained)
{
    std::vector<std::string> kept;
    for (const auto& identifier : explained.kept)
        kept.push_back(identifier.value_or("what has no identifier"));
    std::vector<std::string> all = kept;
    all.insert(all.end(), explained.refused.begin(), explained.refused.end());
    std::string text = roadName(*explained.road) + " for " + joined(all) + " → ";
    switch (explained.outcome) {
    case StoreOutcome::Pass:
        return text + "passes.";
    case StoreOutcome::Shrink:
        text += "goes on with " + joined(kept);
        break;
    case StoreOutcome::Refuse:
        text += "refused with " + refusalText(explained.road->refusal);
        break;
    }
    return text + ": " + std::string(policy::blockedUpdate.key) + " lists " + joined(explained.refused) + ".";
}

} // namespace cli
