#include "surfaces/store_filter.h"

#include <algorithm>

namespace appledger {

namespace {

constexpr StoreRoadTraits roads[] {
    { StoreRoad::IsUpdateAvailable, "ASDApp", "isUpdateAvailable", false, StoreRefusal::AnswersFalse },
    { StoreRoad::UpdateAvailable, "ASDApp", "updateAvailable", false, StoreRefusal::AnswersFalse },
    { StoreRoad::UpdateMetadata, "ASDApp", "updateMetadata", false, StoreRefusal::AnswersNil },
    { StoreRoad::PurchaseRequest, "ASDPurchaseRequest", "initWithOptions:", true, StoreRefusal::AnswersNil },
    { StoreRoad::Jobs, "ASDJobManager", "addJobs:withCompletionBlock:", true,
        StoreRefusal::CompletesWithFalseAndError },
    { StoreRoad::Purchase, "ASDPurchaseManager", "startPurchase:withResultHandler:", false,
        StoreRefusal::CompletesWithNilAndError },
    { StoreRoad::SoftwarePurchases, "SKUIItemStateCenter",
        "_performSoftwarePurchases:withClientContext:completionBlock:", true, StoreRefusal::CompletesWithNil },
    { StoreRoad::Purchases, "SKUIItemStateCenter",
        "_performPurchases:hasBundlePurchase:withClientContext:completionBlock:", true,
        StoreRefusal::CompletesWithNil },
};

} // namespace

const StoreRoadTraits& traits(StoreRoad road) noexcept
{
    return roads[static_cast<std::size_t>(road)];
}

std::span<const StoreRoadTraits> storeRoads() noexcept
{
    return roads;
}

StoreVerdict decideStore(std::span<const std::optional<std::string_view>> identifiers, const IdentifierList& blocked)
{
    StoreVerdict verdict;
    for (const auto& identifier : identifiers)
        verdict.kept.push_back(!identifier || !blocked.contains(*identifier));
    const auto keptCount = std::ranges::count(verdict.kept, true);
    if (keptCount != std::ssize(verdict.kept))
        verdict.outcome = keptCount == 0 ? StoreOutcome::Refuse : StoreOutcome::Shrink;
    return verdict;
}

} // namespace appledger
