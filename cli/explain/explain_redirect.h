#pragma once

#include "cli/explain/explain_policies.h"
#include "launch/redirect_decision.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

/// What the redirect decision says of a recorded transition, and why, by the deciding code itself.

namespace cli {

/// A verdict, with the texts that it speaks of kept by the record.
struct ExplainedRedirect {
    appledger::RedirectVerdict verdict {};
    std::string error {}; ///< what is wrong with the record; "" for a verdict
};

/// The record: "transitionRequest" (required), "eventLabel", "sourceEntity" ("bundleIdentifier" and "action":
/// none, openURL or other), "requester" ("name", "bundleIdentifier"), "previousScene", "destination" and
/// "secondsSinceSourceLaunch"; null or absent where there is none.
ExplainedRedirect explainRedirect(const nlohmann::json& record, const ExplainPolicies& policies);

/// The name of the step that decided and behind it the preference key that did, if one did:
/// "forbidden-source IsBlockedFromLaunchingOthers/com.example.a". Where a refusal is reported as a success, a
/// comma and the key that says so follow.
std::string ruleText(const appledger::RedirectVerdict& verdict);

/// {"outcome", "reason", "rule"}, or {"error"}.
nlohmann::json redirectVerdictObject(const ExplainedRedirect& explained);

/// Two sentences for people.
std::string describeRedirect(const appledger::RedirectVerdict& verdict);

} // namespace cli
