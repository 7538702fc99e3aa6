#pragma once

#include "platform/runtime/object.h"
#include "platform/runtime/selector.h"
#include "surfaces/notification_decision.h"

/// What the notification hooks read of the system's objects, which may be bulletins, bulletin requests and
/// notification requests, and what they change on them. An object of another kind tells no application.

namespace appledger {

/// Nil if the object is nil or doesn't answer; else what it answers, an object.
platform::id ALMsgSendObject(const platform::id& object, platform::SEL selector);

/// The application that the notification speaks for: a string that isn't empty, or nil.
platform::id ALExtractNotificationBundleID(const platform::id& object);

/// The decision on what comes in on a road, by the lists as this process has them. `section` is the section that the
/// caller names; anything but a string names none.
NotificationVerdict notificationVerdict(
    const platform::id& object, NotificationRoad road, const platform::id& section = platform::nil);

/// Whether it must not appear, be it blocked or of a hidden application.
bool ALIsNotificationBlocked(const platform::id& object);

/// Whether or not it is blocked as well.
bool ALIsNotificationMuted(const platform::id& object);

/// Takes the sound off the object and off the bulletin that it wraps, in place; nothing else changes.
void ALStripNotificationSound(const platform::id& object);

} // namespace appledger
