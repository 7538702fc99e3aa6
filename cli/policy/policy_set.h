#pragma once

#include "cli/history/policy_session.h"
#include "cli/history/policy_values.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

/// All of the policies at once: every key of AppLedger's in the domain but for what the phone keeps there for itself,
/// and the two files beside it. As JSON:
/// {"format": "appledger-policies", "version": 1, "domain": {…}, "mute": […], "brightness": {…}}

namespace cli {

inline constexpr const char* policySetFormat = "appledger-policies";
inline constexpr int policySetVersion = 1;

/// What of the values is a policy, sorted by key.
nlohmann::json policySetOf(const PolicyValues& values);

/// Why an object is no set, for people, and what of it is wrong: a key, or "". Empty for a set.
struct SetProblem {
    std::string problem;
    std::string key;
};
std::optional<SetProblem> problemOfSet(const nlohmann::json& set);

enum class SetMode {
    Merge, ///< lists get what they lack, tables and the rest what the set has
    Replace, ///< and what the set doesn't have is not set
};

/// What the session is to make of its policies.
void wantSet(PolicySession& session, const nlohmann::json& set, SetMode mode);

/// What `after` has other than `before`, item by item.
std::vector<ItemChange> differences(const nlohmann::json& before, const nlohmann::json& after);

/// Nothing is set for these any more, nor by them for others.
void wantReset(PolicySession& session, const std::vector<std::string>& applications);

/// No policy is set at all.
nlohmann::json emptySet();

} // namespace cli
