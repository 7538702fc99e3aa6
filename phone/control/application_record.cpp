#include "phone/control/application_record.h"

#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "phone/springboard/home/home_screen.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

// In the order in which they are told.
constexpr const char* valueFields[] { "bundleIdentifier", "name", "customIconName", "version", "internalVersion",
    "minimumOSVersion", "platformVersion", "bundleURL", "dataContainerURL", "diskUsageString", "urlSchemes",
    "queriesSchemes", "activityTypes", "backgroundModes", "entitlements", "entitlementsIdentifiers" };
constexpr const char* flagFields[] { "isApplication", "appStoreVendable", "isDeletable", "hasAppStoreApp",
    "isEncrypted" };

Json fieldJson(const id& value)
{
    const auto path = asString(askObject<"path">(value));
    return path ? Json(path->view()) : toJson(value);
}

Json groupsJson(const id& groups)
{
    if (!groups)
        return nullptr;
    Json list = Json::array();
    for (const id& group : itemsOf(groups))
        list.push_back({ { "identifier", toJson(askObject<"identifier">(group)) },
            { "url", fieldJson(askObject<"url">(group)) } });
    return list;
}

/// "record": the fields of the library's record of "application".
Json showRecord(const Json& request)
{
    const FoundRecord found = applicationRecord(text(request, "application"));
    if (!found.record)
        return failure(found.error);
    settleEverywhere(); // what it reads of the bundle's files arrives later, untold
    return { { "ok", true }, { "record", recordJson(found.record) } };
}

constexpr RequestRow rows[] { { "record", showRecord } };

} // namespace

extern const RequestRows recordRequests { rows };

FoundRecord applicationRecord(const std::string& bundleIdentifier)
{
    const id recordClass = id(classNamed<"ALAppLedger">());
    if (!recordClass)
        return { nil, "SpringBoard runs without the library" };
    const id record = askObject<"appLedgerForBundleIdentifier:iconImage:">(recordClass, string(bundleIdentifier), nil);
    if (!askObject<"sbApplication">(record) && !askObject<"appProxy">(record))
        return { nil, "no such application is installed" };
    ask<"setIconView:", void>(record, iconViewOf(bundleIdentifier));
    return { record, {} };
}

Json recordJson(const id& record)
{
    Json fields = Json::object();
    for (const char* const selector : valueFields)
        fields[selector] = fieldJson(sendSelector(record, sel_registerName(selector)));
    for (const char* const selector : flagFields)
        fields[selector] = sendSelector<bool>(record, sel_registerName(selector));
    fields["diskUsage"] = send<"diskUsage", NSInteger>(record);
    fields["appGroups"] = groupsJson(send<"appGroups">(record));
    return fields;
}

} // namespace phone
