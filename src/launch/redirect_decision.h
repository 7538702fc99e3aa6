#pragma once

#include "core/policy_cache.h"
#include "launch/launch_stamps.h"
#include "launch/redirect_rules.h"

#include <optional>
#include <string>
#include <string_view>

/// Whether one application may bring another to front, decided on plain values: what a transition request
/// holds, the rules, and the time. Nothing here allocates unless identifiers are absurdly long.

namespace appledger {

/// What the source brings along.
enum class SourceAction { None, OpenUrl, Other };

struct SourceEntity {
    std::optional<std::string_view> bundleIdentifier {};
    SourceAction action = SourceAction::None;
};

/// A transition request. Empty: the system's object has no such thing.
struct Transition {
    bool isMainWorkspaceRequest = true;
    std::optional<std::string_view> eventLabel {};
    std::optional<SourceEntity> sourceEntity {};
    std::optional<std::string_view> requesterName {}; ///< of the process that the request comes from
    std::optional<std::string_view> requesterBundleIdentifier {};
    std::optional<std::string_view> previousScene {}; ///< identifier of the scene that was in front
    std::optional<std::string_view> destination {};
};

enum class RedirectOutcome {
    Pass,
    Decline,
    Background, ///< pass, with the destination in the background
};

/// The step of the decision that settled it, in the order in which they are taken.
enum class RedirectStep {
    NotATransition,
    OtherLabel,
    OtherAction,
    UnknownApplication,
    SameApplication,
    Hidden,
    Paused,
    AllowedPair,
    ForbiddenSource,
    SystemSource,
    ForbiddenDestination,
    AppStore,
    Safari,
    ForbiddenPair,
    Default,
};

/// "forbidden-source": lower case with hyphens, and never changed, since scripts compare it.
std::string_view name(RedirectStep step) noexcept;

/// Who wants to open whom, or why that doesn't matter.
struct RedirectParties {
    std::optional<std::string_view> source {};
    std::optional<std::string_view> destination {};
    std::optional<RedirectStep> passes {}; ///< the step at which the transition passes already
};

/// Reads the two from a transition: the source from its entity, the scene that was in front, or the process
/// that asks. The texts are the transition's, or constants.
RedirectParties redirectParties(const Transition& transition) noexcept;

struct RedirectPolicies {
    RedirectRules rules {};
    IdentifierList hidden {};
    const LaunchStamps* lastLaunches = nullptr; ///< null: none
};

struct RedirectVerdict {
    RedirectOutcome outcome = RedirectOutcome::Pass;
    RedirectStep step = RedirectStep::Default;
    RedirectParties parties {}; ///< valid as long as the transition's texts
    bool isSimulated = false; ///< a refusal, but one that the source is to take for a success

    /// What the request is told when it is declined; "" otherwise.
    std::string_view reason() const noexcept;

    /// The preference key that decided, and the one of the simulation; "" for none.
    std::string key() const;
    std::string simulationKey() const;
};

/// `now` and the stamps are seconds on one clock.
RedirectVerdict decideRedirect(const Transition& transition, const RedirectPolicies& policies, double now);

} // namespace appledger
