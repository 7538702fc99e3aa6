#pragma once

#include <string>
#include <string_view>

/// `appledger explain …` in bulk: a verdict for each record.

namespace cli {

class ExplainPolicies;

/// The verdict on one line of records, as one line of JSON without its end. A line that isn't a record gets
/// {"error": …}.
std::string explainLaunchLine(std::string_view line, const ExplainPolicies& policies);
std::string explainRedirectLine(std::string_view line, const ExplainPolicies& policies);
std::string explainNotificationLine(std::string_view line, const ExplainPolicies& policies);
std::string explainPurchaseLine(std::string_view line, const ExplainPolicies& policies);

} // namespace cli
