#include "cli/explain/explain_notification.h"

#include "cli/explain/explain_record.h"

#include <algorithm>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

const Json* member(const Json* object, std::string_view key)
{
    if (!object || !object->is_object())
        return nullptr;
    const auto found = object->find(key);
    return found == object->end() ? nullptr : &*found;
}

std::optional<std::string_view> textOf(const Json* value)
{
    return value && value->is_string() ? std::optional<std::string_view>(value->get_ref<const std::string&>())
                                       : std::nullopt;
}

std::optional<std::string_view> identifierOf(const Json* holder)
{
    for (const std::string_view selector : notificationIdentifierSelectors)
        if (const auto text = textOf(member(holder, selector)); text && !text->empty())
            return text;
    return std::nullopt;
}

std::optional<std::string_view> extractIdentifier(const Json* notification)
{
    auto identifier = identifierOf(notification);
    for (const std::string_view wrapper : notificationWrapperSelectors)
        if (!identifier)
            identifier = identifierOf(member(notification, wrapper));
    return identifier;
}

std::string_view outcomeName(NotificationOutcome outcome)
{
    switch (outcome) {
    case NotificationOutcome::Pass:
        return "pass";
    case NotificationOutcome::Mute:
        return "mute";
    case NotificationOutcome::Drop:
        return "drop";
    }
    return "";
}

std::string_view effect(NotificationOutcome outcome, NotificationRoad road)
{
    const bool isAlert = road == NotificationRoad::Alert;
    switch (outcome) {
    case NotificationOutcome::Pass:
        return isAlert ? "alerts" : "published";
    case NotificationOutcome::Mute:
        return isAlert ? "no alert" : "published without its sound";
    case NotificationOutcome::Drop:
        return isAlert ? "no alert" : "dropped";
    }
    return "";
}

} // namespace

std::string roadName(const NotificationRoadTraits& road)
{
    return std::string(road.className).append(" ").append(road.selector);
}

const NotificationRoadTraits* notificationRoadNamed(std::string_view name)
{
    const auto found = std::ranges::find_if(
        notificationRoads(), [name](const NotificationRoadTraits& road) { return roadName(road) == name; });
    return found == notificationRoads().end() ? nullptr : &*found;
}

ExplainedNotification explainNotification(const Json& record, const ExplainPolicies& policies)
{
    RecordReader reader(record);
    const auto wanted = reader.text("road");
    const NotificationRoadTraits* const road = wanted ? notificationRoadNamed(*wanted) : nullptr;
    if (!road)
        reader.fail(wanted ? "there is no road \"" + std::string(*wanted) + "\"" : "\"road\" is a text");
    const Json* const notification = reader.object("notification");
    if (!reader.error().empty())
        return { .error = reader.error() };
    const auto own = extractIdentifier(notification);
    const auto section = textOf(member(&record, "section"));
    const NotificationLists lists { policies.blockedNotifications.list(), policies.mutedNotifications.list(),
        policies.hidden.list() };
    return { road, decideNotification(own, road->road, lists, section),
        std::string(own              ? *own
                : road->namesSection ? section.value_or("")
                                     : "") };
}

Json notificationVerdictObject(const ExplainedNotification& explained)
{
    if (!explained.error.empty())
        return { { "error", explained.error } };
    return { { "outcome", outcomeName(explained.verdict.outcome) },
        { "application", explained.identifier.empty() ? Json(nullptr) : Json(explained.identifier) },
        { "rule", explained.verdict.key.empty() ? Json(nullptr) : Json(explained.verdict.key) } };
}

std::string describeNotificationVerdict(const ExplainedNotification& explained)
{
    std::string text = roadName(*explained.road) + " → ";
    text += effect(explained.verdict.outcome, explained.road->road);
    if (explained.verdict.key.empty())
        return text + ".";
    return text.append(": ").append(explained.verdict.key).append(" lists ").append(explained.identifier).append(".");
}

} // namespace cli
