#include "phone/control/answers.h"
#include "phone/control/application_record.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "platform/darwin/bus.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <chrono>

namespace phone {

using namespace platform;

namespace {

/// "rename": gives "application" the "name" by its record; null takes it back.
Json renameApplication(const Json& request)
{
    const FoundRecord found = applicationRecord(text(request, "application"));
    if (!found.record)
        return failure(found.error);
    const Json name = request.value("name", Json());
    if (!name.is_null() && !name.is_string())
        return failure("a name is a text");
    send<"setCustomIconName:", void>(found.record, name.is_string() ? string(text(request, "name")) : nil);
    settle();
    if (toJson(send<"customIconName">(found.record)) != name)
        return failure("the name isn't kept");
    return { { "ok", true }, { "name", toJson(send<"name">(found.record)) }, { "customName", name } };
}

/// What the icon of the record's application shows; a number, a text, or null.
Json shownBadge(const id& record)
{
    const id application = send<"sbApplication">(record);
    const auto badge = ask<"badgeValue">(application);
    return toJson(badge ? *badge : askObject<"badgeNumberOrString">(application));
}

/// "badge": sets the badge of "application" by its record where there is a "count", restores it where "restored" is
/// true, and says what its icon shows then.
Json badgeOfApplication(const Json& request)
{
    const FoundRecord found = applicationRecord(text(request, "application"));
    if (!found.record)
        return failure(found.error);
    const id application = send<"sbApplication">(found.record);
    if (!application)
        return failure("it has no badge: it is no application");
    const Json count = request.value("count", Json());
    if (count.is_number_integer())
        send<"setAppBadgeCount:", void>(found.record, count.get<std::int64_t>());
    else if (request.value("restored", Json(false)) == true)
        send<"restoreAppBadgeDefault", void>(found.record);
    // The icon is drawn before SpringBoard hears of the new badge.
    constexpr std::chrono::seconds patience { 5 };
    flushBus(patience);
    settle();
    ask<"_notifyAccessoriesDidUpdate", void>(askObject<"icon">(send<"iconView">(found.record)));
    settle();
    return { { "ok", true }, { "shown", shownBadge(found.record) } };
}

constexpr RequestRow rows[] {
    { "rename", renameApplication },
    { "badge", badgeOfApplication },
};

} // namespace

extern const RequestRows nameAndBadgeRequests { rows };

} // namespace phone
