#include "cli/explain/explain_command.h"

#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/transition_options.h"
#include "cli/command/verb_rows.h"
#include "cli/explain/explain_launch.h"
#include "cli/explain/explain_notification.h"
#include "cli/explain/explain_purchases.h"
#include "cli/explain/explain_redirect.h"
#include "core/preference_domain.h"
#include "phone/appstoredaemon/store_roads.h"
#include "phone/bulletinboard/push.h"
#include "phone/search/spotlight.h"
#include "phone/springboard/roads.h"
#include "phone/supervisor/phone_directory.h"
#include "platform/foundation/files.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <span>

namespace cli {

using namespace appledger;
using namespace platform;
using Json = nlohmann::json;

namespace {

struct ExplainOptions {
    std::string preferences; ///< property list on this machine; "" for the phone's domain
    Word destination; ///< the application in question; "" to answer records
    std::vector<Word> purchases; ///< what is to be bought; none to answer records
    Word road; ///< one road; "" for all
    std::optional<Word> bypass;
    std::optional<double> secondsSinceLaunch;
    TransitionOptions transition;
};

struct Preferences {
    id dictionary;
    std::string problem; ///< why there is no dictionary, for people
};

Preferences preferencesFor(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    if (!options.preferences.empty()) {
        id dictionary = preferencesFromHostFile(options.preferences);
        if (!dictionary)
            return { nil, options.preferences + " isn't a property list with a dictionary" };
        return { std::move(dictionary), {} };
    }
    if (std::string problem = directory.problem(); !problem.empty())
        return { nil, std::move(problem) };
    setDeviceRoot(directory.root());
    const auto defaults = synchronizedPreferences();
    if (const std::string problem = defaults->readProblem(); !problem.empty())
        return { nil, "the preferences can't be read: " + std::string(preferenceFile) + ": " + problem };
    return { defaults->dictionaryRepresentation(), {} };
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
    Json record { { "road", roadName(road) }, { "bundleIdentifier", options.destination.text() },
        { "layout", { options.destination.text() } } };
    if (options.bypass)
        record["bypass"] = options.bypass->text();
    return explainLaunch(record, policies);
}

Json objectWithRoad(const ExplainedLaunch& explained)
{
    Json object = launchVerdictObject(explained);
    object["road"] = roadName(*explained.road);
    object["rule"] = explained.key.empty() ? Json(nullptr) : Json(explained.key);
    return object;
}

/// Of the phone in question, while it is up.
std::optional<SystemVersion> versionOf(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    if (!options.preferences.empty() || !connectToPhone(directory))
        return std::nullopt;
    return parseSystemVersion(askPhone(phone::supervisorPeer, { { "verb", "status" } }).value("ios", ""));
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
        return refuseUsage("there is no road " + options.road.text());
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

ExitStatus explainLaunches(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const Preferences preferences = preferencesFor(directory, options);
    if (!preferences.dictionary)
        return refuse(preferences.problem);
    const ExplainPolicies policies(preferences.dictionary);
    if (options.destination.empty())
        return answerLines(policies, explainLaunchLine);

    const LaunchRoadTraits* const wanted = options.road.empty() ? nullptr : roadNamed(roadFrom(options.road));
    const auto version = versionOf(directory, options);
    if (wanted && version && !roadExists(*wanted, *version))
        return refuse("version " + version->text() + " has no road " + options.road.text());
    return answerRoads(launchRoads(), wanted, options, { { "application", options.destination.text() } },
        [&](const LaunchRoadTraits& road) -> std::vector<RoadAnswer> {
            if (version && !roadExists(road, *version))
                return {};
            const ExplainedLaunch explained = explainOn(road, options, policies);
            return { { describeLaunchVerdict(explained), objectWithRoad(explained) } };
        });
}

ExitStatus explainRedirects(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const Preferences preferences = preferencesFor(directory, options);
    if (!preferences.dictionary)
        return refuse(preferences.problem);
    const ExplainPolicies policies(preferences.dictionary);
    if (options.destination.empty()) {
        if (options.transition.any())
            return refuseUsage("--to is missing: the application to open");
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
    const Preferences preferences = preferencesFor(directory, options);
    if (!preferences.dictionary)
        return refuse(preferences.problem);
    const ExplainPolicies policies(preferences.dictionary);
    if (options.destination.empty())
        return answerLines(policies, explainNotificationLine);
    return answerRoads(notificationRoads(), options.road.empty() ? nullptr : notificationRoad(options.road), options,
        { { "application", options.destination.text() } }, [&](const NotificationRoadTraits& road) {
            const ExplainedNotification explained = explainNotification(
                { { "road", roadName(road) }, { "notification", { { "sectionID", options.destination.text() } } } },
                policies);
            return std::vector { RoadAnswer {
                describeNotificationVerdict(explained), notificationVerdictObject(explained) } };
        });
}

ExitStatus explainPurchases(const phone::PhoneDirectory& directory, const ExplainOptions& options)
{
    const Preferences preferences = preferencesFor(directory, options);
    if (!preferences.dictionary)
        return refuse(preferences.problem);
    const ExplainPolicies policies(preferences.dictionary);
    if (options.purchases.empty())
        return answerLines(policies, explainPurchaseLine);
    const std::vector<std::string> identifiers(options.purchases.begin(), options.purchases.end());
    return answerRoads(storeRoads(), options.road.empty() ? nullptr : storeRoad(options.road), options,
        { { "applications", identifiers } }, [&](const StoreRoadTraits& road) {
            std::vector<RoadAnswer> answers;
            for (const ExplainedPurchase& explained : explainOn(road, identifiers, policies))
                answers.push_back({ describePurchaseVerdict(explained), purchaseVerdictObject(explained) });
            return answers;
        });
}

using ExplainFunction = ExitStatus (*)(const phone::PhoneDirectory& directory, const ExplainOptions& options);

Action explaining(Arguments& arguments, const std::shared_ptr<ExplainOptions>& options, ExplainFunction function)
{
    arguments.add("--preferences", options->preferences, "a property list of this machine (default: the phone's)")
        .shownAs("FILE");
    return [options, function](const phone::PhoneDirectory& directory) { return function(directory, *options); };
}

Action launch(Arguments& arguments)
{
    const auto options = std::make_shared<ExplainOptions>();
    arguments.add("ID", options->destination, "bundle identifier").example("com.example.notes");
    arguments.add("--road", options->road, "one road: \"tap\", or \"SBIconView _handleTap\"");
    arguments.add("--bypass", options->bypass, "the application that has just been authenticated").shownAs("ID");
    return explaining(arguments, options, explainLaunches);
}

Action notification(Arguments& arguments)
{
    const auto options = std::make_shared<ExplainOptions>();
    arguments.add("ID", options->destination, "bundle identifier").example("com.example.notes");
    arguments.add("--road", options->road, "one road: \"bulletin\", or \"BBServer publishBulletin:destinations:\"");
    return explaining(arguments, options, explainNotifications);
}

Action redirect(Arguments& arguments)
{
    const auto options = std::make_shared<ExplainOptions>();
    arguments.add("--to", options->destination, "bundle identifier of the application to open")
        .shownAs("ID")
        .example("com.example.mail");
    addTransitionOptions(arguments, options->transition);
    arguments.add("--since-launch", options->secondsSinceLaunch, "seconds since the source was launched")
        .shownAs("SECONDS");
    return explaining(arguments, options, explainRedirects);
}

Action purchases(Arguments& arguments)
{
    const auto options = std::make_shared<ExplainOptions>();
    arguments.add("ID", options->purchases, "bundle identifiers of what is bought at once")
        .example("com.example.notes");
    arguments.add("--road", options->road, "one road: \"jobs\", or \"ASDApp isUpdateAvailable\"");
    return explaining(arguments, options, explainPurchases);
}

constexpr VerbRow rows[] {
    { "explain launch",
        "whether an application opens, road by road; without ID, a verdict for each record on standard input", launch },
    { "explain notification",
        "whether a notification is published, road by road; without ID, a verdict for each record on standard input",
        notification },
    { "explain redirect",
        "whether one application may open another; without --to, a verdict for each record on standard input",
        redirect },
    { "explain purchases",
        "whether the store shows and installs an update, road by road; without ID, a verdict for each record on "
        "standard input",
        purchases },
};

} // namespace

extern const VerbRows explainVerbs { rows };

std::string explainLaunchLine(std::string_view text, const ExplainPolicies& policies)
{
    return jsonLine(launchVerdictObject(explainLaunch(parseLine(text), policies)));
}

std::string explainNotificationLine(std::string_view text, const ExplainPolicies& policies)
{
    return jsonLine(notificationVerdictObject(explainNotification(parseLine(text), policies)));
}

std::string explainRedirectLine(std::string_view text, const ExplainPolicies& policies)
{
    const Json record = parseLine(text);
    return jsonLine(redirectVerdictObject(explainRedirect(record, policies)));
}

std::string explainPurchaseLine(std::string_view text, const ExplainPolicies& policies)
{
    return jsonLine(purchaseVerdictObject(explainPurchase(parseLine(text), policies)));
}

} // namespace cli
