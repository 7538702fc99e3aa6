#pragma once

#include "core/policy_cache.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// Which of the things that the store is about to install may be installed, decided on plain values.

namespace appledger {

/// The methods of the store through which an update shows or is bought. No single one sees every purchase.
enum class StoreRoad {
    IsUpdateAvailable,
    UpdateAvailable,
    UpdateMetadata,
    PurchaseRequest,
    Jobs,
    Purchase,
    SoftwarePurchases,
    Purchases,
};

/// What the caller gets in place of the method's own answer when everything that it asked for is blocked.
enum class StoreRefusal {
    AnswersFalse,
    AnswersNil,
    CompletesWithFalseAndError,
    CompletesWithNilAndError,
    CompletesWithNil,
};

struct StoreRoadTraits {
    StoreRoad road;
    std::string_view className;
    std::string_view selector;
    bool takesSeveral; ///< a list, which may be blocked in part
    StoreRefusal refusal;
};

const StoreRoadTraits& traits(StoreRoad road) noexcept;
std::span<const StoreRoadTraits> storeRoads() noexcept; ///< all, in the order of the enumeration

/// The error that a blocked purchase completes with; its one text is told as it stands in every language.
inline constexpr std::string_view blockedErrorDomain = "ASDErrorDomain";
inline constexpr int blockedErrorCode = 500;
inline constexpr std::string_view blockedErrorText = "Blocked by AppLedger";

enum class StoreOutcome {
    Pass, ///< nothing is blocked
    Shrink, ///< some are kept
    Refuse, ///< all are blocked
};

struct StoreVerdict {
    StoreOutcome outcome = StoreOutcome::Pass;
    std::vector<bool> kept {}; ///< of each identifier
};

/// For the identifiers of what is to be installed, in order. What has none is kept.
StoreVerdict decideStore(std::span<const std::optional<std::string_view>> identifiers, const IdentifierList& blocked);

} // namespace appledger
