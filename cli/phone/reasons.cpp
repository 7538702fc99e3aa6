#include "cli/phone/reasons.h"

#include "cli/command/phone_client.h"
#include "cli/explain/explain_launch.h"
#include "cli/explain/explain_notification.h"
#include "cli/explain/explain_purchases.h"
#include "cli/explain/explain_redirect.h"
#include "core/policies.h"
#include "platform/foundation/files.h"
#include "platform/foundation/user_defaults.h"
#include "platform/foundation/values.h"

#include <algorithm>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

/// The preferences as the phone's files hold them, which is what the processes that hear of changes have read.
platform::id presentPreferences(const phone::PhoneDirectory& directory)
{
    platform::setDeviceRoot(directory.root());
    return preferences()->dictionaryRepresentation();
}

void add(Json& report, const Json& rule, const std::string& why)
{
    report["rule"] = rule;
    report["why"] = why;
}

void addUnknown(Json& report)
{
    add(report, nullptr,
        "no rule of the present lists says so. The process that decided may have read them before they changed: "
        "'appledger policy history' tells what did.");
}

/// The lists as Spotlight read them at its start, in the form of a record's "cached".
Json listsOfSpotlight()
{
    const Json answer
        = askPhone("Spotlight", { { "verb", "preferences-at-start" }, { "domain", std::string(preferenceSuite) } });
    const Json content = answer.value("content", Json::object());
    Json lists = Json::object();
    for (const std::string_view key : { policy::requireAuth.key, policy::blockedLaunch.key })
        lists[std::string(key)] = content.value(std::string(key), Json::array());
    return lists;
}

Json launchRecord(const std::string& road, const std::vector<std::string>& applications,
    const std::optional<std::string>& authenticated)
{
    return { { "road", road }, { "bundleIdentifier", applications.empty() ? "" : applications.front() },
        { "layout", applications }, { "bypass", authenticated ? Json(*authenticated) : Json(nullptr) } };
}

/// Where a launch was stopped that the report tells of: the name of a road, "" for one that has none.
std::string roadOf(const Json& report, bool isOfSpotlight)
{
    if (!report.value("declined", Json::array()).empty())
        return roadName(traits(LaunchRoad::WorkspaceValidate));
    if (const Json process = report.value("prompts", Json::array()); !process.empty())
        return process.back().value("process", "") == "Spotlight" ? roadName(traits(LaunchRoad::SpotlightOpenService))
                                                                  : roadName(traits(LaunchRoad::WorkspaceExecute));
    const Json stopped = report.value("stoppedAt", Json());
    if (!stopped.is_string())
        return "";
    const auto method = stopped.get<std::string>();
    const std::string inSpotlight = "Spotlight " + method;
    return isOfSpotlight && roadNamed(inSpotlight) ? inSpotlight : method;
}

std::string listsText(std::string_view key, const std::string& application)
{
    return std::string(key) + " lists " + application + ".";
}

} // namespace

void addLaunchReason(Json& report, const phone::PhoneDirectory& directory, const std::vector<std::string>& applications,
    bool isOfSpotlight, const std::optional<std::string>& authenticated)
{
    const bool hasOpened
        = !report.value("opened", Json::array()).empty() || !report.value("background", Json::array()).empty();
    const bool prompts = !report.value("prompts", Json::array()).empty();
    if (hasOpened && !prompts)
        return;
    const std::string name = roadOf(report, isOfSpotlight);
    const LaunchRoadTraits* const road = roadNamed(name);
    if (!road)
        return addUnknown(report);
    const ExplainPolicies policies(presentPreferences(directory));
    Json record = launchRecord(name, applications, authenticated);
    const bool decidesOnOldLists = name.starts_with("Spotlight ");
    if (decidesOnOldLists)
        record["cached"] = listsOfSpotlight();
    const ExplainedLaunch explained = explainLaunch(record, policies);
    if (explained.key.empty())
        return addUnknown(report);
    std::string why = listsText(explained.key, explained.identifier);
    if (decidesOnOldLists) {
        const ExplainedLaunch today = explainLaunch(launchRecord(name, applications, authenticated), policies);
        if (today.key != explained.key)
            why += " Spotlight decides on the lists that it read when it started; they have changed since "
                   "('appledger phone kill Spotlight' has it read them anew).";
    }
    add(report, explained.key, why);
}

void addRedirectReason(Json& report, const phone::PhoneDirectory& directory, const Json& transition)
{
    const std::string outcome = report.value("outcome", Json()).is_string() ? report["outcome"].get<std::string>() : "";
    if (outcome == "pass")
        return;
    const std::string destination = transition.value("destination", "");
    const ExplainPolicies policies(presentPreferences(directory));
    const ExplainedRedirect explained = explainRedirect(transition, policies);
    const bool isRefusal = explained.error.empty() && explained.verdict.outcome != RedirectOutcome::Pass;
    if (!isRefusal || outcome.empty())
        return addLaunchReason(report, directory, { destination }, false);
    const std::string key = explained.verdict.key();
    const std::string text = describeRedirect(explained.verdict);
    const std::size_t why = text.find("Why: ");
    add(report, key, why == std::string::npos ? ruleText(explained.verdict) : text.substr(why + 5));
}

void addPushReason(Json& report, const phone::PhoneDirectory& directory, const std::string& application,
    const std::string& roadMethod, bool hasSound)
{
    const bool isPublished = report.value("published", false);
    const bool isWhole = isPublished && report.value("alerted", false) && (!hasSound || report.value("sounded", false));
    if (isWhole)
        return;
    const ExplainedNotification explained = explainNotification(
        { { "road", roadMethod }, { "notification", { { "sectionID", application } } }, { "section", application } },
        ExplainPolicies(presentPreferences(directory)));
    if (explained.verdict.key.empty())
        return addUnknown(report);
    add(report, explained.verdict.key, listsText(explained.verdict.key, application));
}

void addPurchaseReason(Json& report, const phone::PhoneDirectory& directory,
    const std::vector<std::string>& applications, const std::string& roadMethod)
{
    if (report.value("refused", Json::array()).empty())
        return;
    const ExplainPolicies policies(presentPreferences(directory));
    const StoreRoadTraits* const road = storeRoadFrom(roadMethod);
    std::vector<std::string> refused;
    for (const std::string& application : applications) {
        // Each alone says the same of each as all together.
        const ExplainedPurchase explained
            = explainPurchase({ { "road", roadMethod }, { "identifiers", Json::array({ application }) } }, policies);
        if (road && explained.outcome != StoreOutcome::Pass)
            refused.push_back(application);
    }
    if (refused.empty())
        return addUnknown(report);
    std::string list;
    for (const std::string& application : refused)
        list += (list.empty() ? "" : ", ") + application;
    add(report, policy::blockedUpdate.key, listsText(policy::blockedUpdate.key, list));
}

bool isListed(const phone::PhoneDirectory& directory, std::string_view key, const std::string& application)
{
    const platform::id value = platform::pairsOf(presentPreferences(directory))[key];
    return IdentifierArray(value).list().contains(application);
}

void addListReason(Json& report, std::string_view key, const std::string& application)
{
    add(report, key, listsText(key, application));
}

std::string whyText(const Json& report)
{
    const Json why = report.value("why", Json());
    return why.is_string() ? " Why: " + why.get<std::string>() : "";
}

} // namespace cli
