#pragma once

#include "core/policy_cache.h"

#include <optional>
#include <string_view>

/// Which applications' caches are cleared, and when, decided on plain values.

namespace appledger {

enum class ClearOutcome {
    NotChosen,
    SystemApplication, ///< every application was chosen, and that means none of the system's
    Listed,
    EveryApplication,
};

constexpr bool clears(ClearOutcome outcome) noexcept
{
    return outcome == ClearOutcome::Listed || outcome == ClearOutcome::EveryApplication;
}

/// When an application's process has ended. To be on the list wins, for an application of the system too.
ClearOutcome decideClearAtExit(std::string_view identifier, const IdentifierList& listed, bool everyApplication);

/// For an installed application in the sweep after a start with every application chosen: the list doesn't
/// count then.
ClearOutcome decideClearInSweep(std::string_view identifier);

/// Seconds between two clears of one application; one exit may be told twice.
constexpr double shortestTimeBetweenClears = 3.0;

/// Times in seconds on one clock.
bool mayClearAgain(std::optional<double> lastClear, double now);

} // namespace appledger
