#include "surfaces/notification_decision.h"

#include "core/policies.h"

namespace appledger {

namespace {

constexpr NotificationRoadTraits roads[] {
    { NotificationRoad::Bulletin, "BBServer", "publishBulletin:destinations:", true, false },
    { NotificationRoad::BulletinRequest, "BBServer", "publishBulletinRequest:destinations:", true, false },
    // The system comes here for what the row above has passed; who calls it directly is judged by the two lists alone.
    { NotificationRoad::BulletinRequestForSection, "BBServer",
        "_publishBulletinRequest:forSectionID:forDestinations:", false, true },
    { NotificationRoad::Alert, "SBNCAlertingController",
        "alertOnPresentationForNotificationRequest:presentingDestination:", true, false },
};

} // namespace

const NotificationRoadTraits& traits(NotificationRoad road) noexcept
{
    return roads[static_cast<std::size_t>(road)];
}

std::span<const NotificationRoadTraits> notificationRoads() noexcept
{
    return roads;
}

NotificationVerdict decideNotification(std::optional<std::string_view> identifier, NotificationRoad road,
    const NotificationLists& lists, std::optional<std::string_view> section)
{
    const NotificationRoadTraits& roadTraits = traits(road);
    if (identifier.value_or("").empty())
        identifier = roadTraits.namesSection ? section : std::nullopt;
    if (!identifier)
        return {};
    if (roadTraits.dropsHidden && lists.hidden.contains(*identifier))
        return { NotificationOutcome::Drop, policy::hidden.key };
    if (lists.blocked.contains(*identifier))
        return { NotificationOutcome::Drop, policy::blockedNotifications.key };
    if (!identifier->empty() && lists.muted.contains(*identifier))
        return { NotificationOutcome::Mute, policy::mutedNotifications.key };
    return {};
}

} // namespace appledger
