#include "surfaces/notification_hooks.h"

#include "surfaces/notification_filter.h"

namespace appledger {

using namespace platform;

namespace {

/// Whether the system may go on to publish it; takes the sound off what is muted.
bool mayPublish(const id& notification, NotificationRoad road, const id& section = nil)
{
    switch (notificationVerdict(notification, road, section).outcome) {
    case NotificationOutcome::Drop:
        return false;
    case NotificationOutcome::Mute:
        ALStripNotificationSound(notification);
        break;
    case NotificationOutcome::Pass:
        break;
    }
    return true;
}

struct PublishBulletin : Hook<PublishBulletin, "BBServer", "publishBulletin:destinations:", void(id, NSUInteger)> {
    static void replacement(const id& self, SEL cmd, const id& bulletin, NSUInteger destinations)
    {
        if (mayPublish(bulletin, NotificationRoad::Bulletin))
            original(self, cmd, bulletin, destinations);
    }
};

struct PublishBulletinRequest
    : Hook<PublishBulletinRequest, "BBServer", "publishBulletinRequest:destinations:", void(id, NSUInteger)> {
    static void replacement(const id& self, SEL cmd, const id& request, NSUInteger destinations)
    {
        if (mayPublish(request, NotificationRoad::BulletinRequest))
            original(self, cmd, request, destinations);
    }
};

struct PublishBulletinRequestForSection
    : Hook<PublishBulletinRequestForSection, "BBServer",
          "_publishBulletinRequest:forSectionID:forDestinations:", void(id, id, NSUInteger)> {
    static void replacement(const id& self, SEL cmd, const id& request, const id& section, NSUInteger destinations)
    {
        if (mayPublish(request, NotificationRoad::BulletinRequestForSection, section))
            original(self, cmd, request, section, destinations);
    }
};

struct AlertOnPresentation : Hook<AlertOnPresentation, "SBNCAlertingController",
                                 "alertOnPresentationForNotificationRequest:presentingDestination:", void(id, id)> {
    static void replacement(const id& self, SEL cmd, const id& request, const id& presentingDestination)
    {
        if (notificationVerdict(request, NotificationRoad::Alert).outcome == NotificationOutcome::Pass)
            original(self, cmd, request, presentingDestination);
    }
};

constexpr HookRow rows[] {
    PublishBulletin::row(),
    PublishBulletinRequest::row(),
    PublishBulletinRequestForSection::row(),
    AlertOnPresentation::row(),
};

} // namespace

const HookRows notificationRows { rows };

} // namespace appledger
