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

Original<void(id, NSUInteger)> original_publishBulletin;

void BBServer_publishBulletin(const id& self, SEL cmd, const id& bulletin, NSUInteger destinations)
{
    if (mayPublish(bulletin, NotificationRoad::Bulletin))
        original_publishBulletin(self, cmd, bulletin, destinations);
}

Original<void(id, NSUInteger)> original_publishBulletinRequest;

void BBServer_publishBulletinRequest(const id& self, SEL cmd, const id& request, NSUInteger destinations)
{
    if (mayPublish(request, NotificationRoad::BulletinRequest))
        original_publishBulletinRequest(self, cmd, request, destinations);
}

Original<void(id, id, NSUInteger)> original_publishBulletinRequestForSection;

void BBServer_publishBulletinRequestForSection(
    const id& self, SEL cmd, const id& request, const id& section, NSUInteger destinations)
{
    if (mayPublish(request, NotificationRoad::BulletinRequestForSection, section))
        original_publishBulletinRequestForSection(self, cmd, request, section, destinations);
}

Original<void(id, id)> original_alertOnPresentation;

void SBNCAlertingController_alertOnPresentation(
    const id& self, SEL cmd, const id& request, const id& presentingDestination)
{
    if (notificationVerdict(request, NotificationRoad::Alert).outcome == NotificationOutcome::Pass)
        original_alertOnPresentation(self, cmd, request, presentingDestination);
}

constexpr HookRow rows[] {
    replace<&BBServer_publishBulletin>("BBServer", "publishBulletin:destinations:", original_publishBulletin),
    replace<&BBServer_publishBulletinRequest>(
        "BBServer", "publishBulletinRequest:destinations:", original_publishBulletinRequest),
    replace<&BBServer_publishBulletinRequestForSection>(
        "BBServer", "_publishBulletinRequest:forSectionID:forDestinations:", original_publishBulletinRequestForSection),
    replace<&SBNCAlertingController_alertOnPresentation>("SBNCAlertingController",
        "alertOnPresentationForNotificationRequest:presentingDestination:", original_alertOnPresentation),
};

} // namespace

const HookRows notificationRows { rows };

} // namespace appledger
