#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A notification that arrives from outside, and what the notification centre holds.

namespace phone {

struct Notification {
    std::string bundleIdentifier;
    std::string title {};
    std::string body {};
    std::optional<long> badge {};
    std::string badgeText {}; ///< a badge that is no number: "!"; "" for none
    bool hasSound = false;
};

/// A method of the server through which a notification comes in.
struct PushRoad {
    std::string_view name; ///< what a person calls it: "bulletin"
    std::string_view method;
    void (*push)(const Notification& notification);
};

std::span<const PushRoad> pushRoads() noexcept;

/// Sends the road's first message; false when there is no such road. What came of it is in the journal.
bool push(std::string_view road, const Notification& notification);

/// The oldest first.
std::vector<Notification> publishedNotifications();

} // namespace phone
