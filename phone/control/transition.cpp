#include "phone/control/answers.h"
#include "phone/control/authentication.h"
#include "phone/control/request_rows.h"
#include "phone/springboard/roads.h"
#include "phone/springboard/workspace/app_to_app.h"

#include <algorithm>

namespace phone {

namespace {

std::optional<std::string> textIfAny(const Json& object, std::string_view key)
{
    const auto value = object.find(key);
    return value != object.end() && value->is_string() ? std::optional(value->get<std::string>()) : std::nullopt;
}

Json objectOrEmpty(const Json& object, std::string_view key)
{
    const auto value = object.find(key);
    return value != object.end() && value->is_object() ? *value : Json::object();
}

AppToAppTransition readTransition(const Json& described)
{
    const Json requester = objectOrEmpty(described, "requester");
    AppToAppTransition transition { .destination = text(described, "destination"),
        .label = textIfAny(described, "eventLabel"),
        .requesterName = text(requester, "name"),
        .requesterBundleIdentifier = text(requester, "bundleIdentifier"),
        .previousScene = textIfAny(described, "previousScene") };
    const Json entity = objectOrEmpty(described, "sourceEntity");
    if (!entity.empty()) {
        const std::string action = text(entity, "action");
        transition.source = { textIfAny(entity, "bundleIdentifier"),
            action == "openURL"     ? AppToAppAction::OpenUrl
                : action == "other" ? AppToAppAction::ContinueActivity
                                    : AppToAppAction::None };
    }
    return transition;
}

bool wasValidated(const std::vector<JournalEntry>& entries)
{
    return std::ranges::any_of(entries, [](const JournalEntry& entry) {
        return entry.event == JournalEvent::Sent
            && entry.subject == "SBMainWorkspace _canExecuteTransitionRequest:forExecution:";
    });
}

/// "transition": one application opens another. The request names the transition under "transition" as {"eventLabel",
/// "sourceEntity": {"bundleIdentifier", "action"}, "requester": {"name", "bundleIdentifier"}, "previousScene",
/// "destination"}; what is null or absent the transition doesn't have, but for the scene, which is then that of what is
/// in front. The answer is a launch report with "outcome" ("pass", "decline", "background"; null when the transition
/// was stopped before its validation), "reason" and "inBackground".
Json openFromAnotherApplication(const Json& request)
{
    const AppToAppTransition transition = readTransition(objectOrEmpty(request, "transition"));
    const AppToAppAnswer answer = openFromApplication(transition);
    switch (answer.asked) {
    case AppToAppAnswer::Asked::NobodyForUnknownDestination:
        return failure("no application " + transition.destination + " is installed");
    case AppToAppAnswer::Asked::NobodyForUnknownSource:
        return failure("no application " + *transition.source->bundleIdentifier + " is installed");
    case AppToAppAnswer::Asked::Workspace:
        break;
    }
    const std::vector<JournalEntry> entries = takeJournal();
    nameApplicationOfPrompt(entries, { transition.destination });
    Json report = launchReport(entries);
    if (answer.executed)
        report["outcome"] = answer.wentToBackground ? "background" : "pass";
    else
        report["outcome"] = wasValidated(entries) ? Json("decline") : Json(nullptr);
    report["reason"] = answer.reason ? Json(*answer.reason) : Json(nullptr);
    report["inBackground"] = answer.wentToBackground;
    report["front"] = frontmostApplication();
    return report;
}

constexpr RequestRow rows[] { { "transition", openFromAnotherApplication } };

} // namespace

extern const RequestRows transitionRequests { rows };

} // namespace phone
