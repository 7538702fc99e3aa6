#include "phone/control/permissions.h"

#include "phone/control/answers.h"
#include "phone/control/application_record.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "phone/device/decisions.h"
#include "phone/springboard/applications/applications.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

constexpr Service serviceRows[] {
    { "calendar", "kTCCServiceCalendar" },
    { "camera", "kTCCServiceCamera" },
    { "contacts", "kTCCServiceAddressBook" },
    { "location", "" },
    { "microphone", "kTCCServiceMicrophone" },
    { "photos", "kTCCServicePhotos" },
    { "reminders", "kTCCServiceReminders" },
};

constexpr int locationDenied = 2;
constexpr int locationAlways = 3;

id locationManager()
{
    return id(classNamed<"CLLocationManager">());
}

Json locationJson(const std::string& identifier)
{
    switch (send<"authorizationStatusForBundleIdentifier:", int>(locationManager(), string(identifier))) {
    case locationDenied:
        return false;
    case locationAlways:
        return true;
    default:
        return nullptr;
    }
}

/// {"count", "decisions": [{"service", "allowed"}], "location"}. The count is null where the system can't tell.
Json permissionsJson(const id& record, const std::string& identifier)
{
    const id information = send<"getPermissions">(record);
    Json decisions = Json::array();
    for (const id& one : itemsOf(information))
        decisions.push_back({ { "service", toJson(pairsOf(one)["kTCCInfoService"]) },
            { "allowed", toJson(pairsOf(one)["kTCCInfoGranted"]) } });
    return { { "ok", true }, { "count", information ? Json(decisions.size()) : Json(nullptr) },
        { "decisions", decisions }, { "location", locationJson(identifier) } };
}

/// "app-permissions": by the library's record of "application".
Json showPermissions(const Json& request)
{
    const std::string identifier = text(request, "application");
    const FoundRecord found = applicationRecord(identifier);
    return found.record ? permissionsJson(found.record, identifier) : failure(found.error);
}

Json resetPermissions(const Json& request)
{
    const std::string identifier = text(request, "application");
    const FoundRecord found = applicationRecord(identifier);
    if (!found.record)
        return failure(found.error);
    send<"resetAllAppPermissions", void>(found.record);
    settle();
    Json answer = permissionsJson(found.record, identifier);
    answer["notes"] = subjects(takeJournal(), JournalEvent::Note);
    return answer;
}

/// "permission": what the owner decides about the "service", a word, of "application" when it asks: "allow" or "deny".
Json decidePermission(const Json& request)
{
    const std::string identifier = text(request, "application");
    const std::string word = text(request, "service");
    const bool isAllowed = text(request, "decision") == "allow";
    const auto* const service = std::ranges::find(serviceRows, word, &Service::word);
    if (service == std::end(serviceRows))
        return failure("there is no service called " + word);
    if (!applicationNamed(identifier))
        return failure("no such application is installed");
    const bool isKept = service->name.empty()
        ? decide(DecisionKind::Location, identifier, "Authorization", isAllowed ? locationAlways : locationDenied)
        : decide(DecisionKind::Access, identifier, service->name, isAllowed);
    return isKept ? Json { { "ok", true } } : failure("the decision can't be kept");
}

constexpr RequestRow rows[] {
    { "app-permissions", showPermissions },
    { "app-reset-permissions", resetPermissions },
    { "permission", decidePermission },
};

} // namespace

extern const RequestRows permissionRequests { rows };

std::span<const Service> services() noexcept
{
    return serviceRows;
}

} // namespace phone
