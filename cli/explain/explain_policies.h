#pragma once

#include "core/policy_cache.h"
#include "launch/redirect_rules.h"

#include <string>
#include <utility>

namespace cli {

/// One list of applications, with an index as a policy cache has it. (A cache itself lives as long as its process.)
class ExplainList {
public:
    explicit ExplainList(platform::id value)
        : array_(std::move(value))
        , index_(array_.identifiers())
    {
    }
    ExplainList(const ExplainList&) = delete;
    ExplainList& operator=(const ExplainList&) = delete;

    appledger::IdentifierList list() const { return appledger::IdentifierList(array_.identifiers(), &index_); }

private:
    const appledger::IdentifierArray array_;
    const appledger::StringSet index_;
};

/// The policies of explainable decisions that a dictionary of preferences sets, as the processes that read it have
/// them.
class ExplainPolicies {
public:
    explicit ExplainPolicies(const platform::id& preferences);

    const ExplainList requireAuth;
    const ExplainList blocked;
    const ExplainList hidden;
    const ExplainList blockedNotifications;
    const ExplainList mutedNotifications;
    const ExplainList updateBlocked;
    const appledger::RedirectRuleSets redirect;
};

/// The dictionary in a property-list file of this machine, XML or binary. Nil when there is none.
platform::id preferencesFromHostFile(const std::string& path);

} // namespace cli
