#include "cli/phone/notification_verbs.h"

#include "cli/command/phone_client.h"
#include "phone/bulletinboard/push.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string describePush(const Json& report, const std::string& application)
{
    if (!report.value("published", false)) {
        std::string text = "Dropped: the notification of " + application + " was not published.";
        if (report["stoppedAt"].is_string())
            text += " Stopped at " + report["stoppedAt"].get<std::string>() + ".";
        return text;
    }
    return "Published for " + application + ", " + (report.value("sounded", false) ? "with its sound" : "silent") + ", "
        + (report.value("alerted", false) ? "alerted." : "not alerted.");
}

std::string describeNotification(const Json& notification)
{
    std::string text = notification.value("application", "");
    for (const char* const key : { "title", "body" })
        if (const std::string part = notification.value(key, ""); !part.empty())
            text += (std::string_view(key) == "title" ? ": " : " - ") + part;
    if (notification["badge"].is_number())
        text += " (badge " + std::to_string(notification["badge"].get<long>()) + ")";
    return text + (notification.value("sound", false) ? "" : " [silent]");
}

} // namespace

void addNotificationVerbs(CLI::App& phone, PushOptions& options, const std::function<void(PhoneAction)>& chosen)
{
    std::vector<std::string> roads;
    for (const phone::PushRoad& road : phone::pushRoads())
        roads.emplace_back(road.name);
    CLI::App* const push = phone.add_subcommand("push", "let a notification of an application arrive");
    push->add_option("ID", options.application, "bundle identifier")->required();
    push->add_option("--title", options.title)->type_name("TEXT");
    push->add_option("--body", options.body)->type_name("TEXT");
    push->add_option("--badge", options.badge, "the number on the icon")->type_name("N");
    push->add_flag("--sound", options.hasSound, "with a sound");
    push->add_option("--road", options.road, "the server's method that it enters by (default bulletin)")
        ->check(CLI::IsMember(roads));
    push->callback([&options, chosen] {
        chosen([&options](const phone::PhoneDirectory& directory) { return phonePush(directory, options); });
    });
    phone.add_subcommand("notifications", "what the notification centre holds")->callback([chosen] {
        chosen(phoneNotifications);
    });
}

ExitStatus phonePush(const phone::PhoneDirectory& directory, const PushOptions& options)
{
    const Json report = askPhone(directory, "SpringBoard",
        { { "verb", "push" }, { "application", options.application }, { "title", options.title },
            { "body", options.body }, { "badge", options.badge ? Json(*options.badge) : Json(nullptr) },
            { "sound", options.hasSound }, { "road", options.road } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say(describePush(report, options.application), report);
    return ExitStatus::Done;
}

ExitStatus phoneNotifications(const phone::PhoneDirectory& directory)
{
    const Json report = askPhone(directory, "SpringBoard", { { "verb", "notifications" } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    std::ostringstream text;
    for (const Json& notification : report["notifications"])
        text << describeNotification(notification) << '\n';
    say(report["notifications"].empty() ? "The notification centre is empty." : text.str(), report);
    return ExitStatus::Done;
}

} // namespace cli
