#include "surfaces/store_update_hooks.h"

#include "core/bundle_identifier.h"
#include "core/policies.h"
#include "platform/foundation/block.h"
#include "platform/foundation/error.h"
#include "platform/foundation/key_value_coding.h"
#include "platform/runtime/message.h"
#include "surfaces/store_filter.h"

namespace appledger {

using namespace platform;

namespace {

/// How the identifier of something that is to be installed is found; nil for none.
using Identify = id (*)(const id& item);

id identifierOfStoreItem(const id& item)
{
    id identifier = ALSafeExtractBundleID(item);
    return identifier ? identifier : askObject<"valueForProperty:">(item, string("softwareInfo/bundleId"));
}

struct Filtered {
    StoreOutcome outcome = StoreOutcome::Pass;
    id kept {}; ///< the items that are left when some are blocked
};

Filtered filterItems(const std::vector<id>& items, const IdentifierArray& blocked, Identify identify)
{
    std::vector<std::optional<StringValue>> texts;
    for (const id& item : items)
        texts.push_back(asString(identify(item)));
    const std::vector<std::optional<std::string_view>> identifiers(texts.begin(), texts.end());
    const StoreVerdict verdict = decideStore(identifiers, blocked.list());
    if (verdict.outcome != StoreOutcome::Shrink)
        return { verdict.outcome };
    std::vector<id> kept;
    for (std::size_t index = 0; index < items.size(); ++index)
        if (verdict.kept[index])
            kept.push_back(items[index]);
    return { verdict.outcome, array(std::move(kept)) };
}

/// What the filter says, or, where it raises, that nothing is blocked.
template <class Filter> auto lettingThroughWhatRaises(Filter filter) -> decltype(filter())
{
    try {
        return filter();
    } catch (...) { // raised by the system's objects, whatever it is: it stops no purchase
        return {};
    }
}

/// The list as it is to be handed on, or its refusal; anything but an array passes.
Filtered filterList(const id& list, Identify identify)
{
    return lettingThroughWhatRaises([&]() -> Filtered {
        if (!list)
            return {};
        const IdentifierArray blocked(ALGetBlockedUpdateApps());
        const auto items = asArray(list);
        if (blocked.identifiers().empty() || !items)
            return {};
        return filterItems({ items->begin(), items->end() }, blocked, identify);
    });
}

bool isBlocked(const id& item)
{
    return lettingThroughWhatRaises([&] {
        if (!item)
            return false;
        const IdentifierArray blocked(ALGetBlockedUpdateApps());
        return !blocked.identifiers().empty()
            && filterItems({ item }, blocked, ALSafeExtractBundleID).outcome == StoreOutcome::Refuse;
    });
}

/// Takes what is blocked out of the options of a request; true when nothing would be left.
bool requestIsRefused(const id& options)
{
    return lettingThroughWhatRaises([&] {
        if (!options)
            return false;
        const IdentifierArray blocked(ALGetBlockedUpdateApps());
        if (blocked.identifiers().empty())
            return false;
        const id purchases = askObject<"purchases">(options);
        const auto items = asArray(purchases);
        if (!items)
            return false;
        const Filtered filtered = filterItems({ items->begin(), items->end() }, blocked, ALSafeExtractBundleID);
        if (filtered.outcome == StoreOutcome::Shrink && !ask<"setPurchases:", void>(options, filtered.kept))
            setValueForKey(options, filtered.kept, "_purchases");
        return filtered.outcome == StoreOutcome::Refuse;
    });
}

id blockedError()
{
    return error(
        blockedErrorDomain, blockedErrorCode, dictionary({ { "NSLocalizedDescription", string(blockedErrorText) } }));
}

/// Calls the completion in the form that its method promises.
void completeRefused(StoreRoad road, const id& completion)
{
    switch (traits(road).refusal) {
    case StoreRefusal::CompletesWithFalseAndError:
        return callBlock(completion, false, blockedError());
    case StoreRefusal::CompletesWithNilAndError:
        return callBlock(completion, nil, blockedError());
    case StoreRefusal::CompletesWithNil:
        return callBlock(completion, nil);
    case StoreRefusal::AnswersFalse:
    case StoreRefusal::AnswersNil:
        return;
    }
}

struct IsUpdateAvailable : Hook<IsUpdateAvailable, "ASDApp", "isUpdateAvailable", bool()> {
    static bool replacement(const id& self, SEL cmd) { return !isBlocked(self) && original(self, cmd); }
};

struct UpdateAvailable : Hook<UpdateAvailable, "ASDApp", "updateAvailable", bool()> {
    static bool replacement(const id& self, SEL cmd) { return !isBlocked(self) && original(self, cmd); }
};

struct UpdateMetadata : Hook<UpdateMetadata, "ASDApp", "updateMetadata", id()> {
    static id replacement(const id& self, SEL cmd) { return isBlocked(self) ? nil : original(self, cmd); }
};

struct InitWithOptions : Hook<InitWithOptions, "ASDPurchaseRequest", "initWithOptions:", id(id)> {
    static id replacement(const id& self, SEL cmd, const id& options)
    {
        return requestIsRefused(options) ? nil : original(self, cmd, options);
    }
};

struct AddJobs : Hook<AddJobs, "ASDJobManager", "addJobs:withCompletionBlock:", void(id, id)> {
    static void replacement(const id& self, SEL cmd, const id& jobs, const id& completion)
    {
        const Filtered filtered = filterList(jobs, ALSafeExtractBundleID);
        if (filtered.outcome == StoreOutcome::Refuse)
            return completeRefused(StoreRoad::Jobs, completion);
        original(self, cmd, filtered.kept ? filtered.kept : jobs, completion);
    }
};

struct StartPurchase : Hook<StartPurchase, "ASDPurchaseManager", "startPurchase:withResultHandler:", void(id, id)> {
    static void replacement(const id& self, SEL cmd, const id& purchase, const id& handler)
    {
        if (isBlocked(purchase))
            return completeRefused(StoreRoad::Purchase, handler);
        original(self, cmd, purchase, handler);
    }
};

struct PerformSoftwarePurchases
    : Hook<PerformSoftwarePurchases, "SKUIItemStateCenter",
          "_performSoftwarePurchases:withClientContext:completionBlock:", void(id, id, id)> {
    static void replacement(const id& self, SEL cmd, const id& purchases, const id& context, const id& completion)
    {
        const Filtered filtered = filterList(purchases, identifierOfStoreItem);
        if (filtered.outcome == StoreOutcome::Refuse)
            return completeRefused(StoreRoad::SoftwarePurchases, completion);
        original(self, cmd, filtered.kept ? filtered.kept : purchases, context, completion);
    }
};

struct PerformPurchases
    : Hook<PerformPurchases, "SKUIItemStateCenter",
          "_performPurchases:hasBundlePurchase:withClientContext:completionBlock:", void(id, bool, id, id)> {
    static void replacement(
        const id& self, SEL cmd, const id& purchases, bool hasBundlePurchase, const id& context, const id& completion)
    {
        const Filtered filtered = filterList(purchases, identifierOfStoreItem);
        if (filtered.outcome == StoreOutcome::Refuse)
            return completeRefused(StoreRoad::Purchases, completion);
        original(self, cmd, filtered.kept ? filtered.kept : purchases, hasBundlePurchase, context, completion);
    }
};

constexpr HookRow rows[] {
    IsUpdateAvailable::row(),
    UpdateAvailable::row(),
    UpdateMetadata::row(),
    InitWithOptions::row(),
    AddJobs::row(),
    StartPurchase::row(),
    PerformSoftwarePurchases::row(),
    PerformPurchases::row(),
};

} // namespace

const HookGroup AppStoreUpdateHooks { "AppStoreUpdateHooks", rows };

} // namespace appledger
