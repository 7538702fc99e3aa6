#include "phone/bulletinboard/push.h"

#include "phone/system/journal.h"
#include "phone/system/text.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

constexpr NSUInteger everyDestination = 0xFF;

id server()
{
    return send<"sharedServer">(id(classNamed<"BBServer">()));
}

enum class Section { InBulletin, NamedByCaller };

id makeBulletin(const Notification& notification, Section section = Section::InBulletin)
{
    id bulletin = send<"new">(id(classNamed<"BBBulletin">()));
    if (section == Section::InBulletin)
        send<"setSectionID:", void>(bulletin, string(notification.bundleIdentifier));
    send<"setTitle:", void>(bulletin, string(notification.title));
    send<"setMessage:", void>(bulletin, string(notification.body));
    if (notification.badge)
        send<"setBadge:", void>(bulletin, number(*notification.badge));
    else if (!notification.badgeText.empty())
        send<"setBadge:", void>(bulletin, string(notification.badgeText));
    if (notification.hasSound)
        send<"setSound:", void>(bulletin, string("default"));
    return bulletin;
}

id makeRequest(const id& bulletin)
{
    id request = send<"new">(id(classNamed<"BBBulletinRequest">()));
    send<"setBulletin:", void>(request, bulletin);
    return request;
}

void pushBulletin(const Notification& notification)
{
    send<"publishBulletin:destinations:", void>(server(), makeBulletin(notification), everyDestination);
}

void pushRequest(const Notification& notification)
{
    send<"publishBulletinRequest:destinations:", void>(
        server(), makeRequest(makeBulletin(notification)), everyDestination);
}

void pushForSection(const Notification& notification)
{
    send<"_publishBulletinRequest:forSectionID:forDestinations:", void>(server(),
        makeRequest(makeBulletin(notification, Section::NamedByCaller)), string(notification.bundleIdentifier),
        everyDestination);
}

constexpr PushRoad roads[] {
    { "bulletin", "BBServer publishBulletin:destinations:", pushBulletin },
    { "request", "BBServer publishBulletinRequest:destinations:", pushRequest },
    { "section", "BBServer _publishBulletinRequest:forSectionID:forDestinations:", pushForSection },
};

} // namespace

std::span<const PushRoad> pushRoads() noexcept
{
    return roads;
}

bool push(std::string_view name, const Notification& notification)
{
    const auto road = std::ranges::find(roads, name, &PushRoad::name);
    if (road == std::end(roads))
        return false;
    journal(JournalEvent::Sent, road->method);
    road->push(notification);
    return true;
}

std::vector<Notification> publishedNotifications()
{
    std::vector<Notification> notifications;
    for (const id& bulletin : itemsOf(send<"bulletins">(server()))) {
        Notification notification { textOf(send<"sectionID">(bulletin)), textOf(send<"title">(bulletin)),
            textOf(send<"message">(bulletin)) };
        notification.hasSound = static_cast<bool>(send<"sound">(bulletin));
        if (const auto badge = asInteger(send<"badge">(bulletin)))
            notification.badge = *badge;
        notification.badgeText = textOf(send<"badge">(bulletin));
        notifications.push_back(std::move(notification));
    }
    return notifications;
}

} // namespace phone
