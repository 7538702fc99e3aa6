#include "phone/bulletinboard/push.h"
#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/springboard/applications/applications.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace phone {

namespace {

bool happened(const std::vector<JournalEntry>& entries, JournalEvent event)
{
    return std::ranges::find(entries, event, &JournalEntry::event) != entries.end();
}

/// A badge is absent, null, a text, or a whole number of 64 bits with its sign.
bool isBadge(const Json& badge)
{
    return badge.is_null() || badge.is_string()
        || (badge.is_number_unsigned() && std::in_range<long>(badge.get<std::uint64_t>()))
        || (badge.is_number_integer() && !badge.is_number_unsigned());
}

/// "push": publishes "title", "body", "badge" and "sound" for "application" by "road", and says what came of it.
Json pushNotification(const Json& request)
{
    Notification notification { text(request, "application"), text(request, "title"), text(request, "body") };
    const Json badge = request.value("badge", Json());
    if (!isBadge(badge))
        return failure("a badge is a text or a whole number of 64 bits");
    if (badge.is_string())
        notification.badgeText = badge;
    else if (!badge.is_null())
        notification.badge = badge.get<long>();
    if (!applicationNamed(notification.bundleIdentifier))
        return failure("no such application is installed");
    notification.hasSound = request.value("sound", Json(false)) == true;
    const std::string road = text(request, "road");
    if (!push(road, notification))
        return failure("there is no road called " + road);
    const std::vector<JournalEntry> entries = takeJournal();
    const std::string heldUp = heldUpAt(entries);
    return { { "ok", true }, { "published", happened(entries, JournalEvent::Published) },
        { "sounded", happened(entries, JournalEvent::Sounded) },
        { "alerted", happened(entries, JournalEvent::Alerted) }, { "notes", subjects(entries, JournalEvent::Note) },
        { "stoppedAt", heldUp.empty() ? Json(nullptr) : Json(heldUp) }, { "journal", toJson(entries) } };
}

Json badgeOf(const Notification& notification)
{
    if (notification.badge)
        return *notification.badge;
    return notification.badgeText.empty() ? Json(nullptr) : Json(notification.badgeText);
}

/// "notifications": what the notification centre holds, the oldest first.
Json listNotifications(const Json&)
{
    Json list = Json::array();
    for (const Notification& notification : publishedNotifications())
        list.push_back({ { "application", notification.bundleIdentifier }, { "title", notification.title },
            { "body", notification.body }, { "badge", badgeOf(notification) }, { "sound", notification.hasSound } });
    return { { "ok", true }, { "notifications", list } };
}

constexpr RequestRow rows[] {
    { "push", pushNotification },
    { "notifications", listNotifications },
};

} // namespace

extern const RequestRows notificationRequests { rows };

} // namespace phone
