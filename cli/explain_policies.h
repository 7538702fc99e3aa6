#pragma once

#include "core/policy_cache.h"
#include "launch/redirect_rules.h"

#include <string>

namespace cli {

/// The policies about launches that a dictionary of preferences sets, as the processes that read it have them.
class ExplainPolicies {
public:
    explicit ExplainPolicies(const platform::id& preferences);

    appledger::PolicyCache requireAuth;
    appledger::PolicyCache blocked;
    appledger::PolicyCache hidden;
    appledger::RedirectRuleSets redirect;
};

/// The dictionary in a property-list file of this machine, XML or binary. Nil when there is none.
platform::id preferencesFromHostFile(const std::string& path);

} // namespace cli
