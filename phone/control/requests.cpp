#include "phone/control/requests.h"

#include "phone/control/answers.h"
#include "phone/control/authentication.h"
#include "phone/control/device_state.h"
#include "phone/control/exit.h"
#include "phone/control/icon_requests.h"
#include "phone/control/notification_requests.h"
#include "phone/control/store.h"
#include "phone/control/transition_request.h"
#include "phone/search/spotlight.h"
#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/roads.h"
#include "phone/springboard/switcher/switcher.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/run_loop.h"
#include "platform/screen/framework.h"

#include <chrono>
#include <fstream>

namespace phone {

using namespace platform;

namespace {

Json reportOnLaunch(const std::vector<std::string>& identifiers)
{
    runUntilIdle();
    const std::vector<JournalEntry> entries = takeJournal();
    nameApplicationOfPrompt(entries, identifiers);
    Json report = launchReport(entries);
    report["front"] = frontmostApplication();
    report["device"] = deviceState();
    return report;
}

Json open(const Json& request)
{
    takeJournal();
    const std::string road = text(request, "road");
    const std::vector<std::string> identifiers = strings(request, "applications");
    switch (enterRoad(road, identifiers)) {
    case RoadOutcome::UnknownRoad:
        return failure("there is no road called " + road);
    case RoadOutcome::MissingOnThisVersion:
        return failure("the road " + road + " doesn't exist on version " + processFacts().version.text());
    case RoadOutcome::UnknownApplication:
        return failure("no such application is installed");
    case RoadOutcome::Entered:
        break;
    }
    return reportOnLaunch(identifiers);
}

Json openForAnotherProcess(const Json& request)
{
    takeJournal();
    openApplication(
        { text(request, "application"), text(request, "requesterName"), text(request, "requesterBundleIdentifier") });
    return reportOnLaunch({ text(request, "application") });
}

Json home(const Json&)
{
    takeJournal();
    const std::string left = frontmostApplication();
    pressHome();
    runUntilIdle();
    Json report = launchReport(takeJournal());
    report["left"] = left;
    report["front"] = frontmostApplication();
    report["device"] = deviceState();
    return report;
}

Json describeScreen(const Json&)
{
    return { { "ok", true }, { "screen", descriptionOfScreen() } };
}

/// Into a file of the machine that the phone runs on.
Json takeScreenshot(const Json& request)
{
    const std::string path = text(request, "path");
    const double scale = request.contains("scale") && request["scale"].is_number() ? request["scale"].get<double>() : 3;
    const std::string picture = pictureOfScreen(scale);
    if (picture.empty())
        return failure("no picture can have that scale");
    std::ofstream file(path, std::ios::binary);
    file.write(picture.data(), static_cast<std::streamsize>(picture.size()));
    file.close();
    if (!file)
        return failure("can't write " + path);
    return { { "ok", true }, { "path", path }, { "bytes", picture.size() } };
}

Json changeFolder(const Json& request)
{
    const std::string name = text(request, "name");
    if (text(request, "change") == "open")
        return openFolderNamed(name) ? Json { { "ok", true } }
                                     : failure("no folder called " + name + " can be opened now");
    return closeFolder(name) ? Json { { "ok", true } } : failure("no folder called " + name + " is open");
}

Json switcherCards(const Json&)
{
    Json cards = Json::array();
    for (const SwitcherCard& card : presentSwitcher())
        cards.push_back({ { "application", card.application }, { "name", card.name }, { "killable", card.killable },
            { "running", card.running }, { "foreground", card.foreground } });
    return { { "ok", true }, { "cards", cards } };
}

Json swipe(const Json& request)
{
    takeJournal();
    const std::string identifier = text(request, "application");
    const SwipeOutcome outcome = swipeCardAway(identifier);
    if (outcome == SwipeOutcome::NoSuchCard)
        return failure("the switcher has no card of " + identifier);
    runUntilIdle();
    return { { "ok", true }, { "killed", outcome == SwipeOutcome::Killed }, { "front", frontmostApplication() },
        { "journal", toJson(takeJournal()) } };
}

Json springBoardStatus(const Json& request)
{
    Json status = processStatus(request);
    status["front"] = frontmostApplication();
    status["device"] = deviceState();
    status["prompt"] = promptStatus();
    return status;
}

Json spotlightStatus(const Json& request)
{
    Json status = processStatus(request);
    status["prompt"] = promptStatus();
    return status;
}

void authenticateInSpringBoard(const Json& request, const Reply& reply)
{
    authenticate(request, [reply](Json report) {
        report["front"] = frontmostApplication();
        reply(report);
    });
}

Json openFromSpotlight(const Json& request)
{
    takeJournal();
    const std::vector<std::string> identifiers = strings(request, "applications");
    const std::string road = text(request, "road");
    if (identifiers.empty())
        return failure("no application is named");
    if (!openSearchResult(road, identifiers.front()))
        return failure("Spotlight has no road called " + road);
    const std::vector<JournalEntry> entries = takeJournal();
    nameApplicationOfPrompt(entries, identifiers);
    return launchReport(entries);
}

} // namespace

void handleSpringBoardRequest(std::string_view request, BusReply reply)
{
    static const auto* const verbs = new Verbs { { "brightness", brightness }, { "describe", describeScreen },
        { "folder", changeFolder }, { "home", home }, { "icons", listIcons }, { "notifications", listNotifications },
        { "open", open }, { "open-request", openForAnotherProcess }, { "push", pushNotification },
        { "screenshot", takeScreenshot }, { "status", springBoardStatus }, { "store-buy", buyInStore },
        { "store-updates", showStoreUpdates }, { "swipe", swipe }, { "switcher", switcherCards },
        { "transition", openFromAnotherApplication }, { "uninstall", uninstallApplication }, { "volume", volume } };
    static const auto* const lateVerbs
        = new LateVerbs { { "authenticate", authenticateInSpringBoard }, { "exit", exitApplication } };
    answer(request, reply, *verbs, *lateVerbs);
}

void handleSpotlightRequest(std::string_view request, BusReply reply)
{
    static const auto* const verbs = new Verbs { { "open", openFromSpotlight }, { "status", spotlightStatus } };
    static const auto* const lateVerbs = new LateVerbs { { "authenticate", authenticate } };
    answer(request, reply, *verbs, *lateVerbs);
}

void handleStoreRequest(std::string_view request, BusReply reply)
{
    static const auto* const verbs
        = new Verbs { { "status", processStatus }, { "store-buy", buyInStore }, { "store-updates", showStoreUpdates } };
    answer(request, reply, *verbs);
}

bool forwardOpenRequest(const OpenRequest& request)
{
    const Json asked { { "verb", "open-request" }, { "application", request.bundleIdentifier },
        { "requesterName", processFacts().processName },
        { "requesterBundleIdentifier", processFacts().bundleIdentifier } };
    constexpr auto limit = std::chrono::seconds { 5 };
    const BusOutcome outcome = requestFromPeerAndWait("SpringBoard", asked.dump(), limit);
    if (outcome.status != BusOutcome::Status::Replied) {
        journal(JournalEvent::Note, "SpringBoard didn't answer");
        return false;
    }
    const Json report = Json::parse(outcome.reply, nullptr, false);
    if (!report.is_object())
        return false;
    for (const JournalEntry& entry : journalFromJson(report.value("journal", Json::array())))
        journal(entry.event, entry.subject, entry.detail);
    return !strings(report, "opened").empty();
}

} // namespace phone
