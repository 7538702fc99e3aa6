#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/phone/reasons.h"
#include "phone/bulletinboard/push.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string describePush(const Json& report, const std::string& application)
{
    std::string text;
    if (report.value("published", false))
        text = "Published for " + application + ", " + (report.value("sounded", false) ? "with its sound" : "silent")
            + ", " + (report.value("alerted", false) ? "alerted." : "not alerted.");
    else
        text = "Dropped: the notification of " + application + " was not published.";
    text += whyText(report);
    if (isVerbose() && report["stoppedAt"].is_string())
        text += " Stopped at " + report["stoppedAt"].get<std::string>() + ".";
    for (const Json& note : report["notes"])
        text += ' ' + note.get<std::string>() + '.';
    return text;
}

std::string describeNotification(const Json& notification)
{
    std::string text = notification.value("application", "");
    for (const char* const key : { "title", "body" })
        if (const std::string part = notification.value(key, ""); !part.empty())
            text += (std::string_view(key) == "title" ? ": " : " - ") + part;
    if (const Json& badge = notification["badge"]; !badge.is_null())
        text += " (badge " + (badge.is_string() ? badge.get<std::string>() : badge.dump()) + ")";
    return text + (notification.value("sound", false) ? "" : " [silent]");
}

/// Publishes a notification, and says whether it was published or dropped, sounded, and alerted.
Action push(Arguments& arguments)
{
    struct Options {
        Word application;
        Word title;
        Word body;
        std::optional<long> badge;
        std::optional<Word> badgeText;
        bool hasSound = false;
        Word road { "bulletin" };
    };
    const auto options = std::make_shared<Options>();
    std::vector<std::string> roads;
    for (const phone::PushRoad& road : phone::pushRoads())
        roads.emplace_back(road.name);
    arguments.add("ID", options->application, "bundle identifier").required();
    arguments.add("--title", options->title).shownAs("TEXT");
    arguments.add("--body", options->body).shownAs("TEXT");
    arguments.add("--badge", options->badge, "the number on the icon").shownAs("N");
    arguments.add("--badge-text", options->badgeText, "a badge that is no number, as \"!\"")
        .shownAs("TEXT")
        .excludes("--badge");
    arguments.flag("--sound", options->hasSound, "with a sound");
    arguments.add("--road", options->road, "the server's method that it enters by (default bulletin)").oneOf(roads);
    return [options](const phone::PhoneDirectory& directory) {
        const std::string& application = options->application;
        const Json badge = options->badge ? Json(*options->badge)
            : options->badgeText          ? Json(options->badgeText->text())
                                          : Json(nullptr);
        return tellAnswer(
            directory, "SpringBoard",
            { { "verb", "push" }, { "application", application }, { "title", options->title.text() },
                { "body", options->body.text() }, { "badge", badge }, { "sound", options->hasSound },
                { "road", options->road.text() } },
            [&](Json& report) {
                report["application"] = application;
                for (const phone::PushRoad& road : phone::pushRoads())
                    if (road.name == options->road.text())
                        addPushReason(report, directory, application, std::string(road.method), options->hasSound);
            },
            [&application](const Json& report) { return describePush(report, application); });
    };
}

ExitStatus listNotifications(const phone::PhoneDirectory& directory)
{
    return tellAnswer(directory, "SpringBoard", { { "verb", "notifications" } }, [](const Json& report) {
        std::string text;
        for (const Json& notification : report["notifications"])
            text += describeNotification(notification) + "\n";
        return text.empty() ? "The notification centre is empty." : text;
    });
}

constexpr VerbRow rows[] {
    { "phone push", "let a notification of an application arrive", push, "push" },
    { "phone notifications", "what the notification centre holds", plain<listNotifications>, "notifications" },
};

} // namespace

extern const VerbRows notificationVerbs { rows };

} // namespace cli
