#pragma once

#include "cli/explain/explain_policies.h"
#include "surfaces/store_filter.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the store filter says of a purchase, by the deciding code itself.

namespace cli {

/// "ASDJobManager addJobs:withCompletionBlock:"
std::string roadName(const appledger::StoreRoadTraits& road);

/// The road of that name, or null.
const appledger::StoreRoadTraits* storeRoadFrom(std::string_view name);

struct ExplainedPurchase {
    const appledger::StoreRoadTraits* road = nullptr;
    appledger::StoreOutcome outcome = appledger::StoreOutcome::Pass;
    std::vector<std::optional<std::string>> kept {}; ///< in order; what has no identifier is empty
    std::vector<std::string> refused {};
    std::string error {}; ///< what is wrong with the record; "" for a verdict
};

/// The record: "road" and "identifiers", texts or null in the order of the list; one alone on a road that takes
/// no list.
ExplainedPurchase explainPurchase(const nlohmann::json& record, const ExplainPolicies& policies);

/// {"outcome", "kept", "refused", "answer", "rule"}, or {"error"}.
nlohmann::json purchaseVerdictObject(const ExplainedPurchase& explained);

/// One line for people.
std::string describePurchaseVerdict(const ExplainedPurchase& explained);

} // namespace cli
