#include "cli/explain/explain_command.h"

#include "cli/explain/explain_launch.h"
#include "cli/explain/explain_notification.h"
#include "cli/explain/explain_purchases.h"
#include "cli/explain/explain_redirect.h"
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
#include <span>

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

struct RoadAnswer {
    std::string text; ///< one line for people
    Json object;
};

/// What `explain` says of one road, or of all where the options name none, behind what `answer` says already.
template <class Road, class Explain> ExitStatus answerRoads(
    std::span<const Road> roads, const Road* wanted, const ExplainOptions& options, Json answer, Explain explain)
{
    if (!options.road.empty() && !wanted)
        return refuse("there is no road " + options.road);
    std::string text;
    answer["roads"] = Json::array();
    for (const Road& road : roads) {
        if (wanted && wanted != &road)
            continue;
        for (RoadAnswer& verdict : explain(road)) {
            text += verdict.text + '\n';
            verdict.object["road"] = roadName(road);
            answer["roads"].push_back(std::move(verdict.object));
        }
    }
    say(text, answer);
    return ExitStatus::Done;
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

    return answerRoads(launchRoads(), options.road.empty() ? nullptr : roadNamed(roadFrom(options.road)), options,
        { { "bundleIdentifier", options.destination } }, [&](const LaunchRoadTraits& road) {
            const ExplainedLaunch explained = explainOn(road, options, policies);
            return std::vector { RoadAnswer { describeLaunchVerdict(explained), objectWithRoad(explained) } };
        });
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
    return answerRoads(notificationRoads(), options.road.empty() ? nullptr : notificationRoad(options.road), options,
        { { "bundleIdentifier", options.destination } }, [&](const NotificationRoadTraits& road) {
            const ExplainedNotification explained = explainNotification(
                { { "road", roadName(road) }, { "notification", { { "sectionID", options.destination } } } }, policies);
            return std::vector { RoadAnswer {
                describeNotificationVerdict(explained), notificationVerdictObject(explained) } };
        });
}

ExitStatus explainPurchases(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const auto preferences = preferencesFor(directory, options);
    if (!preferences)
        return refusePreferences(options);
    const ExplainPolicies policies(*preferences);
    if (options.purchases.empty())
        return answerLines(policies, explainPurchaseLine);
    return answerRoads(storeRoads(), options.road.empty() ? nullptr : storeRoad(options.road), options,
        { { "identifiers", options.purchases } }, [&](const StoreRoadTraits& road) {
            std::vector<RoadAnswer> answers;
            for (const ExplainedPurchase& explained : explainOn(road, options.purchases, policies))
                answers.push_back({ describePurchaseVerdict(explained), purchaseVerdictObject(explained) });
            return answers;
        });
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
