#include "phone/appstoredaemon/store_roads.h"
#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/launchservices/installed_applications.h"
#include "platform/darwin/system.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

/// An argument of a completion, as the buyer sees it.
Json toJson(const id& argument)
{
    if (!argument)
        return nullptr;
    if (numberKind(argument) == NumberKind::Boolean)
        return asBool(argument).value();
    if (const auto code = ask<"code", NSInteger>(argument)) {
        const auto domain = asString(askObject<"domain">(argument));
        const auto text = asString(askObject<"localizedDescription">(argument));
        return { { "domain", domain ? domain->text() : "" }, { "code", *code }, { "text", text ? text->text() : "" } };
    }
    if (const auto items = asArray(argument)) {
        Json list = Json::array();
        for (const id& item : *items)
            list.push_back(toJson(item));
        return list;
    }
    return describe(argument);
}

Json toJson(const std::vector<std::vector<id>>& completions)
{
    Json calls = Json::array();
    for (const std::vector<id>& arguments : completions) {
        Json call = Json::array();
        for (const id& argument : arguments)
            call.push_back(toJson(argument));
        calls.push_back(call);
    }
    return calls;
}

/// "store-updates": {"ok", "process", "updates": [{"bundleIdentifier", "isUpdateAvailable", "updateAvailable",
/// "newestVersion"}]}. Refused where the process knows no applications of the store.
Json showStoreUpdates(const Json&)
{
    const std::string& process = processFacts().processName;
    if (!objc_getClass("ASDApp"))
        return failure(process + " knows nothing of updates");
    Json updates = Json::array();
    for (const ShownUpdate& shown : shownUpdates())
        updates.push_back({ { "bundleIdentifier", shown.bundleIdentifier },
            { "isUpdateAvailable", shown.isUpdateAvailable }, { "updateAvailable", shown.updateAvailable },
            { "newestVersion", shown.newestVersion.empty() ? Json(nullptr) : Json(shown.newestVersion) } });
    return { { "ok", true }, { "process", process }, { "updates", updates } };
}

/// "store-buy" with "road" and "applications": {"ok", "process", "road", "kept", "refused", "requestExists",
/// "reachedStore" (whether the system's own method ran), "completions" (each call's arguments), "installed" (of the
/// kept ones those that came, with the version that is there now), "notes", "journal"}.
Json buyInStore(const Json& request)
{
    const std::string name = text(request, "road");
    const StoreRoad* const road = storeRoadNamed(name);
    if (!road)
        return failure("the store has no road called " + name);
    if (!existsHere(*road))
        return failure(processFacts().processName + " has no " + std::string(road->method));
    const std::vector<std::string> wanted = strings(request, "applications");
    const StoreReceipt receipt = buy(*road, wanted);
    const std::vector<JournalEntry> entries = takeJournal();
    const auto letThrough = [&entries](const std::string& identifier) {
        return std::ranges::any_of(entries, [&identifier](const JournalEntry& entry) {
            return entry.event == JournalEvent::Installed && entry.subject == identifier;
        });
    };
    const auto failed = [&entries](const std::string& identifier) {
        return std::ranges::any_of(entries, [&identifier](const JournalEntry& entry) {
            return entry.event == JournalEvent::Note && entry.detail == identifier;
        });
    };
    Json versions = Json::array();
    for (const InstalledApplication& application : installedApplications())
        if (letThrough(application.bundleIdentifier) && !failed(application.bundleIdentifier))
            versions.push_back(
                { { "application", application.bundleIdentifier }, { "applicationVersion", application.version } });
    Json kept = Json::array();
    Json refused = Json::array();
    for (const std::string& identifier : wanted)
        (letThrough(identifier) ? kept : refused).push_back(identifier);
    return { { "ok", true }, { "process", processFacts().processName }, { "road", road->method }, { "kept", kept },
        { "refused", refused }, { "requestExists", receipt.requestExists },
        { "reachedStore",
            std::ranges::any_of(entries, [](const JournalEntry& entry) { return entry.event == JournalEvent::Ran; }) },
        { "completions", toJson(receipt.completions) }, { "installed", versions },
        { "notes", subjects(entries, JournalEvent::Note) }, { "journal", toJson(entries) } };
}

constexpr RequestRow rows[] {
    { "store-buy", buyInStore },
    { "store-updates", showStoreUpdates },
};

} // namespace

extern const RequestRows storeRequests { rows };

} // namespace phone
