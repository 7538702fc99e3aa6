#include "surfaces/auto_clear_decision.h"

namespace appledger {

ClearOutcome decideClearInSweep(std::string_view identifier)
{
    constexpr std::string_view systemPrefix = "com.apple.";
    return identifier.starts_with(systemPrefix) ? ClearOutcome::SystemApplication : ClearOutcome::EveryApplication;
}

ClearOutcome decideClearAtExit(std::string_view identifier, const IdentifierList& listed, bool everyApplication)
{
    if (listed.contains(identifier))
        return ClearOutcome::Listed;
    return everyApplication ? decideClearInSweep(identifier) : ClearOutcome::NotChosen;
}

bool mayClearAgain(std::optional<double> lastClear, double now)
{
    return !lastClear || now - *lastClear >= shortestTimeBetweenClears;
}

} // namespace appledger
