#include "cli/explain_command.h"

#include "cli/explain_launch.h"
#include "cli/explain_notification.h"
#include "cli/explain_purchases.h"
#include "cli/explain_redirect.h"
#include "core/preference_domain.h"
#include "phone/appstoredaemon/store_roads.h"
#include "phone/bulletinboard/push.h"
#include "phone/search/spotlight.h"
#include "phone/springboard/roads.h"
#include "platform/foundation/files.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <sstream>

namespace cli {

using namespace appledger;
using namespace platform;
using Json = nlohmann::json;

namespace {

std::optional<id> preferencesFor(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    if (!options.preferences.empty()) {
        id preferences = preferencesFromHostFile(options.preferences);
        return preferences ? std::optional(std::move(preferences)) : std::nullopt;
    }
    setDeviceRoot(directory.root());
    return synchronizedPreferences()->dictionaryRepresentation();
}

ExitStatus refusePreferences(const ExplainOptions& options)
{
    return refuse(options.preferences + " isn't a property list with a dictionary");
}

std::string line(const Json& object)
{
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json parseLine(std::string_view text)
{
    return Json::parse(text, nullptr, false);
}

/// One verdict for each line of standard input, written at the latest before it waits for more.
ExitStatus answerLines(
    const ExplainPolicies& policies, std::string (*explain)(std::string_view, const ExplainPolicies&))
{
    constexpr std::size_t enough = std::size_t { 1 } << 16;
    std::ios::sync_with_stdio(false);
    std::string record;
    std::string answers;
    const auto write = [&answers] {
        const bool written = std::fwrite(answers.data(), 1, answers.size(), stdout) == answers.size();
        answers.clear();
        return std::fflush(stdout) == 0 && written;
    };
    while (std::getline(std::cin, record)) {
        answers.append(explain(record, policies)).push_back('\n');
        if ((answers.size() >= enough || std::cin.rdbuf()->in_avail() <= 0) && !write())
            return refuse("standard output can't be written");
    }
    return write() ? ExitStatus::Done : refuse("standard output can't be written");
}

/// A road by its class and selector, or by what the phone's verbs call it.
std::string roadFrom(const std::string& name)
{
    const auto called = [&name](const auto& road) { return road.name == name; };
    // The phone calls this road by the method that it sends; what can stop it is the validation.
    if (name == "workspace-validate")
        return roadName(traits(LaunchRoad::WorkspaceValidate));
    const auto roads = phone::springBoardRoads();
    if (const auto road = std::ranges::find_if(roads, called); road != roads.end())
        return std::string(road->method);
    const auto searchRoads = phone::searchRoads();
    if (const auto road = std::ranges::find_if(searchRoads, called); road != searchRoads.end())
        return "Spotlight " + std::string(road->method);
    return name;
}

/// A road of notifications by its class and selector, or by what `phone push` calls it.
const NotificationRoadTraits* notificationRoad(const std::string& name)
{
    if (name == "alert")
        return &traits(NotificationRoad::Alert);
    const auto roads = phone::pushRoads();
    const auto road = std::ranges::find(roads, name, &phone::PushRoad::name);
    return notificationRoadNamed(road == roads.end() ? std::string_view(name) : road->method);
}

/// A road of the store's by its class and selector, or by what `phone store buy` calls it.
const StoreRoadTraits* storeRoad(const std::string& name)
{
    const phone::StoreRoad* const road = phone::storeRoadNamed(name);
    return storeRoadFrom(road ? road->method : std::string_view(name));
}

/// One list of all of them where the road takes a list, else each alone.
std::vector<ExplainedPurchase> explainOn(
    const StoreRoadTraits& road, const std::vector<std::string>& identifiers, const ExplainPolicies& policies)
{
    std::vector<ExplainedPurchase> verdicts;
    const auto explain = [&](const Json& list) {
        verdicts.push_back(explainPurchase({ { "road", roadName(road) }, { "identifiers", list } }, policies));
    };
    if (road.takesSeveral) {
        explain(identifiers);
    } else {
        for (const std::string& identifier : identifiers)
            explain(Json::array({ identifier }));
    }
    return verdicts;
}

ExplainedLaunch explainOn(const LaunchRoadTraits& road, const ExplainOptions& options, const ExplainPolicies& policies)
{
    Json record { { "road", roadName(road) }, { "bundleIdentifier", options.destination },
        { "layout", { options.destination } } };
    if (options.bypass)
        record["bypass"] = *options.bypass;
    return explainLaunch(record, policies);
}

Json objectWithRoad(const ExplainedLaunch& explained)
{
    Json object = launchVerdictObject(explained);
    object["road"] = roadName(*explained.road);
    object["rule"] = explained.key.empty() ? Json(nullptr) : Json(explained.key);
    return object;
}

} // namespace

void addExplain(CLI::App& command, ExplainOptions& options, const std::function<void(ExplainAction)>& chosen)
{
    CLI::App* const explain = command.add_subcommand("explain", "say what would happen, and which rule says so");
    explain->require_subcommand(1);
    explain->fallthrough();
    const auto add = [&](const char* name, const char* description, auto function) {
        CLI::App* const verb = explain->add_subcommand(name, description);
        verb->add_option("--preferences", options.preferences, "a property list of this machine (default: the phone's)")
            ->type_name("FILE");
        verb->callback([&options, chosen, function] {
            chosen(
                [&options, function](const phone::PhoneDirectory& directory) { return function(directory, options); });
        });
        return verb;
    };
    CLI::App* const launch = add("launch",
        "whether an application opens, road by road; without ID, a verdict for each record on standard input",
        explainLaunches);
    launch->add_option("ID", options.destination, "bundle identifier");
    launch->add_option("--road", options.road, "one road: \"tap\", or \"SBIconView _handleTap\"");
    launch->add_option("--bypass", options.bypass, "the application that has just been authenticated")->type_name("ID");

    CLI::App* const notification = add("notification",
        "whether a notification is published, road by road; without ID, a verdict for each record on standard input",
        explainNotifications);
    notification->add_option("ID", options.destination, "bundle identifier");
    notification->add_option(
        "--road", options.road, "one road: \"bulletin\", or \"BBServer publishBulletin:destinations:\"");

    CLI::App* const redirect = add("redirect",
        "whether one application may open another; without --to, a verdict for each record on standard input",
        explainRedirects);
    redirect->add_option("--to", options.destination, "bundle identifier of the application to open")->type_name("ID");
    addTransitionOptions(*redirect, options.transition);
    redirect->add_option("--since-launch", options.secondsSinceLaunch, "seconds since the source was launched")
        ->type_name("SECONDS");

    CLI::App* const purchases = add("purchases",
        "whether the store shows and installs an update, road by road; without ID, a verdict for each record on "
        "standard input",
        explainPurchases);
    purchases->add_option("ID", options.purchases, "bundle identifiers of what is bought at once");
    purchases->add_option("--road", options.road, "one road: \"jobs\", or \"ASDApp isUpdateAvailable\"");
}

ExitStatus explainLaunches(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const auto preferences = preferencesFor(directory, options);
    if (!preferences)
        return refusePreferences(options);
    const ExplainPolicies policies(*preferences);
    if (options.destination.empty())
        return answerLines(policies, explainLaunchLine);

    std::vector<ExplainedLaunch> verdicts;
    if (!options.road.empty()) {
        const LaunchRoadTraits* const road = roadNamed(roadFrom(options.road));
        if (!road)
            return refuse("there is no road " + options.road);
        verdicts.push_back(explainOn(*road, options, policies));
    } else {
        for (const LaunchRoadTraits& road : launchRoads())
            verdicts.push_back(explainOn(road, options, policies));
    }
    std::ostringstream text;
    Json roads = Json::array();
    for (const ExplainedLaunch& explained : verdicts) {
        text << describeLaunchVerdict(explained) << '\n';
        roads.push_back(objectWithRoad(explained));
    }
    say(text.str(), { { "bundleIdentifier", options.destination }, { "roads", roads } });
    return ExitStatus::Done;
}

ExitStatus explainRedirects(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const auto preferences = preferencesFor(directory, options);
    if (!preferences)
        return refusePreferences(options);
    const ExplainPolicies policies(*preferences);
    if (options.destination.empty()) {
        if (options.transition.any())
            return refuse("--to is missing: the application to open");
        return answerLines(policies, explainRedirectLine);
    }
    Json record = transitionRecord(options.transition, options.destination);
    if (options.secondsSinceLaunch)
        record["secondsSinceSourceLaunch"] = *options.secondsSinceLaunch;
    const ExplainedRedirect explained = explainRedirect(record, policies);
    Json object = redirectVerdictObject(explained);
    std::string text = describeRedirect(explained.verdict);
    if (explained.verdict.outcome != RedirectOutcome::Decline) {
        const ExplainedLaunch next = explainOn(traits(LaunchRoad::WorkspaceValidate), options, policies);
        text += "\nThe launch hooks come next. " + describeLaunchVerdict(next);
        object["then"] = objectWithRoad(next);
    }
    say(text, object);
    return ExitStatus::Done;
}

ExitStatus explainNotifications(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const auto preferences = preferencesFor(directory, options);
    if (!preferences)
        return refusePreferences(options);
    const ExplainPolicies policies(*preferences);
    if (options.destination.empty())
        return answerLines(policies, explainNotificationLine);
    const NotificationRoadTraits* const wanted = options.road.empty() ? nullptr : notificationRoad(options.road);
    if (!options.road.empty() && !wanted)
        return refuse("there is no road " + options.road);
    std::ostringstream text;
    Json roads = Json::array();
    for (const NotificationRoadTraits& road : notificationRoads()) {
        if (wanted && wanted != &road)
            continue;
        const ExplainedNotification explained = explainNotification(
            { { "road", roadName(road) }, { "notification", { { "sectionID", options.destination } } } }, policies);
        text << describeNotificationVerdict(explained) << '\n';
        roads.push_back(notificationVerdictObject(explained));
        roads.back()["road"] = roadName(road);
    }
    say(text.str(), { { "bundleIdentifier", options.destination }, { "roads", roads } });
    return ExitStatus::Done;
}

ExitStatus explainPurchases(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const auto preferences = preferencesFor(directory, options);
    if (!preferences)
        return refusePreferences(options);
    const ExplainPolicies policies(*preferences);
    if (options.purchases.empty())
        return answerLines(policies, explainPurchaseLine);
    const StoreRoadTraits* const wanted = options.road.empty() ? nullptr : storeRoad(options.road);
    if (!options.road.empty() && !wanted)
        return refuse("there is no road " + options.road);
    std::ostringstream text;
    Json roads = Json::array();
    for (const StoreRoadTraits& road : storeRoads()) {
        if (wanted && wanted != &road)
            continue;
        for (const ExplainedPurchase& explained : explainOn(road, options.purchases, policies)) {
            text << describePurchaseVerdict(explained) << '\n';
            roads.push_back(purchaseVerdictObject(explained));
            roads.back()["road"] = roadName(road);
        }
    }
    say(text.str(), { { "identifiers", options.purchases }, { "roads", roads } });
    return ExitStatus::Done;
}

std::string explainLaunchLine(std::string_view text, const ExplainPolicies& policies)
{
    return line(launchVerdictObject(explainLaunch(parseLine(text), policies)));
}

std::string explainNotificationLine(std::string_view text, const ExplainPolicies& policies)
{
    return line(notificationVerdictObject(explainNotification(parseLine(text), policies)));
}

std::string explainRedirectLine(std::string_view text, const ExplainPolicies& policies)
{
    const Json record = parseLine(text);
    return line(redirectVerdictObject(explainRedirect(record, policies)));
}

std::string explainPurchaseLine(std::string_view text, const ExplainPolicies& policies)
{
    return line(purchaseVerdictObject(explainPurchase(parseLine(text), policies)));
}

} // namespace cli
