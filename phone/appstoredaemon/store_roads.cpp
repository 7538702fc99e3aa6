#include "phone/appstoredaemon/store_roads.h"

#include "phone/appstoredaemon/delivery.h"
#include "phone/launchservices/installed_applications.h"
#include "phone/system/journal.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

id purchaseOf(const std::string& identifier)
{
    id purchase = send<"new">(id(classNamed<"ASDPurchase">()));
    send<"setBundleID:", void>(purchase, string(identifier));
    return purchase;
}

id jobOf(const std::string& identifier)
{
    id job = send<"new">(id(classNamed<"ASDJob">()));
    send<"setBundleIdentifier:", void>(job, string(identifier));
    return job;
}

id itemOf(const std::string& identifier)
{
    id item = send<"new">(id(classNamed<"SKUIItem">()));
    send<"setProperties:", void>(item, dictionary({ { "softwareInfo/bundleId", string(identifier) } }));
    return item;
}

id listOf(const std::vector<std::string>& identifiers, id (*make)(const std::string&))
{
    std::vector<id> items;
    for (const std::string& identifier : identifiers)
        items.push_back(make(identifier));
    return array(std::move(items));
}

/// The completion of a list: whether it went well, and the error.
id successBlock(StoreReceipt& receipt)
{
    return block([&receipt](bool success, const id& failure) {
        receipt.completions.push_back({ boolean(success), failure });
    });
}

id resultBlock(StoreReceipt& receipt)
{
    return block([&receipt](const id& result) { receipt.completions.push_back({ result }); });
}

StoreReceipt request(const std::vector<std::string>& identifiers)
{
    StoreReceipt receipt;
    const id options = send<"initWithPurchases:">(
        send<"alloc">(id(classNamed<"ASDPurchaseRequestOptions">())), listOf(identifiers, purchaseOf));
    const id made = send<"initWithOptions:">(send<"alloc">(id(classNamed<"ASDPurchaseRequest">())), options);
    receipt.requestExists = static_cast<bool>(made);
    send<"startWithCompletionBlock:", void>(made, successBlock(receipt));
    return receipt;
}

StoreReceipt queueJobs(const std::vector<std::string>& identifiers)
{
    StoreReceipt receipt;
    const id manager = send<"defaultManager">(id(classNamed<"ASDJobManager">()));
    send<"addJobs:withCompletionBlock:", void>(manager, listOf(identifiers, jobOf), successBlock(receipt));
    return receipt;
}

StoreReceipt purchaseEach(const std::vector<std::string>& identifiers)
{
    StoreReceipt receipt;
    const id manager = send<"sharedManager">(id(classNamed<"ASDPurchaseManager">()));
    const id handler = block([&receipt](const id& result, const id& failure) {
        receipt.completions.push_back({ result, failure });
    });
    for (const std::string& identifier : identifiers)
        send<"startPurchase:withResultHandler:", void>(manager, purchaseOf(identifier), handler);
    return receipt;
}

id stateCenter()
{
    return send<"defaultCenter">(id(classNamed<"SKUIItemStateCenter">()));
}

StoreReceipt performSoftwarePurchases(const std::vector<std::string>& identifiers)
{
    StoreReceipt receipt;
    send<"_performSoftwarePurchases:withClientContext:completionBlock:", void>(
        stateCenter(), listOf(identifiers, itemOf), nil, resultBlock(receipt));
    return receipt;
}

StoreReceipt performPurchases(const std::vector<std::string>& identifiers)
{
    StoreReceipt receipt;
    send<"_performPurchases:hasBundlePurchase:withClientContext:completionBlock:", void>(
        stateCenter(), listOf(identifiers, itemOf), false, nil, resultBlock(receipt));
    return receipt;
}

constexpr StoreRoad roads[] {
    { "request", "ASDPurchaseRequest initWithOptions:", "AppStore", request },
    { "jobs", "ASDJobManager addJobs:withCompletionBlock:", "appstored", queueJobs },
    { "purchase", "ASDPurchaseManager startPurchase:withResultHandler:", "itunesstored", purchaseEach },
    { "software", "SKUIItemStateCenter _performSoftwarePurchases:withClientContext:completionBlock:", "AppStore",
        performSoftwarePurchases },
    { "purchases", "SKUIItemStateCenter _performPurchases:hasBundlePurchase:withClientContext:completionBlock:",
        "AppStore", performPurchases },
};

id storesViewOf(const InstalledApplication& application)
{
    id app = send<"new">(id(classNamed<"ASDApp">()));
    send<"setBundleID:", void>(app, string(application.bundleIdentifier));
    send<"setNewestVersion:", void>(app, string(versionAfter(application.version)));
    return app;
}

} // namespace

std::span<const StoreRoad> storeRoads() noexcept
{
    return roads;
}

const StoreRoad* storeRoadNamed(std::string_view name) noexcept
{
    const auto road = std::ranges::find(roads, name, &StoreRoad::name);
    return road == std::end(roads) ? nullptr : &*road;
}

bool existsHere(const StoreRoad& road)
{
    const std::size_t space = road.method.find(' ');
    return class_respondsToSelector(
        objc_getClass(road.method.substr(0, space)), sel_registerName(road.method.substr(space + 1)));
}

StoreReceipt buy(const StoreRoad& road, const std::vector<std::string>& identifiers)
{
    journal(JournalEvent::Sent, road.method);
    return road.enter(identifiers);
}

std::vector<ShownUpdate> shownUpdates()
{
    std::vector<ShownUpdate> shown;
    for (const InstalledApplication& application : installedApplications()) {
        if (application.isSystem)
            continue;
        const id app = storesViewOf(application);
        const auto version = asString(pairsOf(send<"updateMetadata">(app))["bundleShortVersionString"]);
        shown.push_back({ application.bundleIdentifier, send<"isUpdateAvailable", bool>(app),
            send<"updateAvailable", bool>(app), version ? version->text() : "" });
    }
    return shown;
}

} // namespace phone
