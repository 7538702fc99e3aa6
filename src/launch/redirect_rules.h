#pragma once

#include "core/string_set.h"
#include "platform/runtime/object.h"
#include "platform/runtime/reclamation.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The rules about which application may open which, as sets that are built from the domain's keys.

namespace appledger {

/// A set of texts that it owns: bundle identifiers, or rule pairs.
class RuleSet {
public:
    explicit RuleSet(std::vector<std::string> texts);

    bool contains(std::string_view text) const noexcept { return set_.contains(text); }
    bool contains(const HashedText& text) const noexcept { return set_.contains(text); }
    std::size_t size() const noexcept { return set_.size(); }

private:
    const std::vector<std::string> texts_;
    const StringSet set_;
};

/// The text of a rule about a source and a destination: "source->destination".
std::string rulePair(std::string_view source, std::string_view destination);

// Each is replaced whole by a reload; null until the first one.
extern platform::Published<RuleSet> gForbiddenLaunchSources;
extern platform::Published<RuleSet> gForbiddenLaunchDestinations;
extern platform::Published<RuleSet> gForbiddenLaunchSourcesForAppStore;
extern platform::Published<RuleSet> gForbiddenLaunchSourcesForSafariServices;
extern platform::Published<RuleSet> gUseLenientModeSources;
extern platform::Published<RuleSet> gUseHandledSimulationSources;
extern platform::Published<RuleSet> gCustomAllowedMappings; ///< rule pairs
extern platform::Published<RuleSet> gCustomForbiddenMappings; ///< rule pairs

/// The sets that one decision reads. Null: no rule of that kind.
struct RedirectRules {
    const RuleSet* forbiddenSources = nullptr;
    const RuleSet* forbiddenDestinations = nullptr;
    const RuleSet* forbiddenSourcesForAppStore = nullptr;
    const RuleSet* forbiddenSourcesForSafari = nullptr;
    const RuleSet* lenientSources = nullptr;
    const RuleSet* simulatedSources = nullptr;
    const RuleSet* allowedPairs = nullptr;
    const RuleSet* forbiddenPairs = nullptr;
};

/// As they stand now in this process. Valid until the read section that the caller holds ends.
RedirectRules currentRedirectRules() noexcept;

/// The sets that a dictionary of preferences describes. Keys that begin otherwise, and values of another type than
/// their key's, are no rules.
class RedirectRuleSets {
public:
    explicit RedirectRuleSets(const platform::id& preferences);

    RedirectRules rules() const noexcept; ///< valid as long as this lives
    void publish() &&;

private:
    std::array<std::unique_ptr<const RuleSet>, 8> sets_; ///< in the order of the table of keys
};

/// Rereads all rule keys of the domain and replaces the eight sets, one after the other: a decision that
/// is made meanwhile may see some old and some new.
void ReloadRedirectPrefs();

} // namespace appledger
