#include "surfaces/notification_hooks.h"

#include "surfaces/notification_filter.h"

namespace appledger {

using namespace platform;

namespace {

/// Whether the system may go on to publish it; takes the sound off what is muted.
bool mayPublish(const id& notification)
{
    if (ALIsNotificationBlocked(notification))
        return false;
    if (ALIsNotificationMuted(notification))
        ALStripNotificationSound(notification);
    return true;
}

struct PublishBulletin : Hook<PublishBulletin, "BBServer", "publishBulletin:destinations:", void(id, NSUInteger)> {
    static void replacement(const id& self, SEL cmd, const id& bulletin, NSUInteger destinations)
    {
        if (mayPublish(bulletin))
            original(self, cmd, bulletin, destinations);
    }
};

struct PublishBulletinRequest
    : Hook<PublishBulletinRequest, "BBServer", "publishBulletinRequest:destinations:", void(id, NSUInteger)> {
    static void replacement(const id& self, SEL cmd, const id& request, NSUInteger destinations)
    {
        if (mayPublish(request))
            original(self, cmd, request, destinations);
    }
};

struct PublishBulletinRequestForSection
    : Hook<PublishBulletinRequestForSection, "BBServer",
          "_publishBulletinRequest:forSectionID:forDestinations:", void(id, id, NSUInteger)> {
    static void replacement(const id& self, SEL cmd, const id& request, const id& section, NSUInteger destinations)
    {
        const auto outcome = notificationVerdict(request, NotificationRoad::BulletinRequestForSection, section).outcome;
        if (outcome == NotificationOutcome::Drop)
            return;
        if (outcome == NotificationOutcome::Mute)
            ALStripNotificationSound(request);
        original(self, cmd, request, section, destinations);
    }
};

struct AlertOnPresentation : Hook<AlertOnPresentation, "SBNCAlertingController",
                                 "alertOnPresentationForNotificationRequest:presentingDestination:", void(id, id)> {
    static void replacement(const id& self, SEL cmd, const id& request, const id& presentingDestination)
    {
        if (!ALIsNotificationBlocked(request) && !ALIsNotificationMuted(request))
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
