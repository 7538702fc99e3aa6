#include "phone/control/launch.h"

#include "phone/control/answers.h"
#include "phone/control/authentication.h"
#include "phone/control/device.h"
#include "phone/control/request_rows.h"
#include "phone/springboard/roads.h"
#include "platform/darwin/bus.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/run_loop.h"

#include <chrono>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

Json reportOnLaunch(const std::vector<std::string>& identifiers)
{
    settle();
    const std::vector<JournalEntry> entries = takeJournal();
    nameApplicationOfPrompt(entries, identifiers);
    Json report = launchReport(entries);
    report["front"] = frontmostApplication();
    report["device"] = deviceState();
    return report;
}

Json open(const Json& request)
{
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
    openApplication(
        { text(request, "application"), text(request, "requesterName"), text(request, "requesterBundleIdentifier") });
    return reportOnLaunch({ text(request, "application") });
}

Json home(const Json&)
{
    const std::string left = frontmostApplication();
    pressHome();
    settle();
    Json report = launchReport(takeJournal());
    report["left"] = left;
    report["front"] = frontmostApplication();
    report["device"] = deviceState();
    return report;
}

constexpr RequestRow rows[] {
    { "open", open },
    { "open-request", openForAnotherProcess },
    { "home", home },
};

} // namespace

extern const RequestRows launchRequests { rows };

bool forwardOpenRequest(const OpenRequest& request)
{
    const Json asked { { "verb", "open-request" }, { "application", request.bundleIdentifier },
        { "requesterName", processFacts().processName },
        { "requesterBundleIdentifier", processFacts().bundleIdentifier } };
    // Whoever opens an application waits for it; this process's other work doesn't.
    const auto arrived = std::make_shared<std::optional<BusOutcome>>();
    requestFromPeer("SpringBoard", asked.dump(), 2s, [arrived](const BusOutcome& answered) { *arrived = answered; });
    runUntil([&arrived] { return arrived->has_value(); }, 3s);
    if (!*arrived || (*arrived)->status != BusOutcome::Status::Replied) {
        journal(JournalEvent::Note, "SpringBoard didn't answer");
        return false;
    }
    const Json report = Json::parse((*arrived)->reply, nullptr, false);
    if (!report.is_object())
        return false;
    for (const JournalEntry& entry : journalFromJson(report.value("journal", Json::array())))
        journal(entry.event, entry.subject, entry.detail);
    return !strings(report, "opened").empty();
}

} // namespace phone
