#pragma once

#include "cli/explain/explain_policies.h"
#include "surfaces/notification_decision.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

/// What the notification filter says of a notification, by the deciding code itself.

namespace cli {

/// "BBServer publishBulletin:destinations:"
std::string roadName(const appledger::NotificationRoadTraits& road);

/// The road of that name, or null.
const appledger::NotificationRoadTraits* notificationRoadNamed(std::string_view name);

struct ExplainedNotification {
    const appledger::NotificationRoadTraits* road = nullptr;
    appledger::NotificationVerdict verdict {};
    std::string identifier {}; ///< the application that was found; "" for none
    std::string error {}; ///< what is wrong with the record; "" for a verdict
};

/// The record: "road", a text; "notification", an object that holds what the system's object answers (the
/// selectors that tell an application, and "notificationRequest" and "bulletin" with objects of the same form);
/// "section", what the caller names. What is null, absent or no text tells nothing, as on the phone.
ExplainedNotification explainNotification(const nlohmann::json& record, const ExplainPolicies& policies);

/// {"outcome", "application", "rule"}, or {"error"}.
nlohmann::json notificationVerdictObject(const ExplainedNotification& explained);

/// One line for people.
std::string describeNotificationVerdict(const ExplainedNotification& explained);

} // namespace cli
