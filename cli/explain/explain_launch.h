#pragma once

#include "cli/explain/explain_policies.h"
#include "launch/launch_decision.h"
#include "platform/darwin/system.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

/// What the launch decision says of an application on a road, and why, by the deciding code itself.

namespace cli {

/// "SBIconView _handleTap"; a road of Spotlight's has "Spotlight " before that.
std::string roadName(const appledger::LaunchRoadTraits& road);

/// The road of that name. "Spotlight " may be left out where no road of SpringBoard's has the name too.
const appledger::LaunchRoadTraits* roadNamed(std::string_view name);

/// Whether the road's process has its method on that version of the platform.
bool roadExists(const appledger::LaunchRoadTraits& road, const platform::SystemVersion& version);

struct ExplainedLaunch {
    const appledger::LaunchRoadTraits* road = nullptr;
    appledger::LaunchOutcome outcome = appledger::LaunchOutcome::Open;
    std::string identifier {}; ///< that is stopped or authenticated
    std::string key {}; ///< preference key of the list that decided; "" when it opens
    std::string reason {}; ///< what the request is told; "" for nothing
    bool hasHaptic = false;
    std::string error {}; ///< what is wrong with the record; "" for a verdict
};

/// The record: "road" (required), "bundleIdentifier", or "layout" (identifiers) on the switcher's roads,
/// "bypass", and "cached" with the lists as the process read them, under their preference keys; a list that isn't
/// there is the policies'. A road that reads the blocked list fresh takes the policies' in any case, and one of
/// Spotlight's knows no hidden applications.
ExplainedLaunch explainLaunch(const nlohmann::json& record, const ExplainPolicies& policies);

/// {"outcome", "prompts", "reason", "haptic"}, or {"error"}.
nlohmann::json launchVerdictObject(const ExplainedLaunch& explained);

/// One line for people.
std::string describeLaunchVerdict(const ExplainedLaunch& explained);

} // namespace cli
