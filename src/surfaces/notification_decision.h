#pragma once

#include "core/policy_cache.h"

#include <optional>
#include <span>
#include <string_view>

/// Whether a notification is published, decided on plain values: where it enters, the application that it
/// speaks for, and the lists.

namespace appledger {

/// The methods of the system through which every notification goes.
enum class NotificationRoad { Bulletin, BulletinRequest, BulletinRequestForSection, Alert };

struct NotificationRoadTraits {
    NotificationRoad road;
    std::string_view className;
    std::string_view selector;
    bool dropsHidden; ///< a hidden application counts as blocked
    bool namesSection; ///< the caller names the section; it stands in for an object that doesn't tell its own
};

const NotificationRoadTraits& traits(NotificationRoad road) noexcept;
std::span<const NotificationRoadTraits> notificationRoads() noexcept; ///< all, in the order of the enumeration

/// What tells the application of a bulletin, of a request or of what wraps one: these selectors of the object
/// itself, then of what each wrapper selector gives. The first text that isn't empty counts.
inline constexpr std::string_view notificationIdentifierSelectors[] { "sectionID", "sectionIdentifier",
    "bundleIdentifier" };
inline constexpr std::string_view notificationWrapperSelectors[] { "notificationRequest", "bulletin" };

struct NotificationLists {
    IdentifierList blocked;
    IdentifierList muted;
    IdentifierList hidden;
};

enum class NotificationOutcome {
    Pass,
    Mute, ///< published without its sound; its alert is left out
    Drop,
};

struct NotificationVerdict {
    NotificationOutcome outcome = NotificationOutcome::Pass;
    std::string_view key {}; ///< the preference key of the list that decided; "" when it passes
};

/// `identifier` is the application that the notification's object tells; `section` is what the caller names, on
/// the road on which it does, and stands in for it. Blocking comes first: what is dropped is never muted. No
/// identifier is on no list, and an empty one is never muted.
NotificationVerdict decideNotification(std::optional<std::string_view> identifier, NotificationRoad road,
    const NotificationLists& lists, std::optional<std::string_view> section = std::nullopt);

} // namespace appledger
