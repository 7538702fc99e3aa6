#include "cli/command/arguments.h"
#include "cli/command/output.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/history/policy_session.h"
#include "core/badges.h"
#include "core/policies.h"
#include "phone/control/value_json.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"

#include <charconv>
#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;
using namespace appledger;

namespace {

/// Has the phone answer, and what that changed of the key stand in the history.
Json askAndRecord(
    const phone::PhoneDirectory& directory, const std::string& verb, std::string_view key, const Json& request)
{
    if (!connectToPhone(directory))
        return { { "ok", false }, { "error", whyNotConnected(directory) } };
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (problem.empty())
        problem = session->beginWatching(verb, { ValueName::ofKey(key) });
    if (!problem.empty())
        return { { "ok", false }, { "error", problem } };
    Json answer = askPhone("SpringBoard", request);
    session->endWatching();
    return answer;
}

/// Gives an application a name of the owner's choice, or takes it back.
Action rename(Arguments& arguments)
{
    struct Options {
        Word application;
        std::optional<Word> name;
        bool isDefault = false;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ID", options->application, "bundle identifier").required();
    arguments.add("NAME", options->name, "the name to show; an empty one is the application's own again");
    arguments.flag("--default", options->isDefault, "the application's own name again").excludes("NAME");
    return [options](const phone::PhoneDirectory& directory) {
        if (!options->name && !options->isDefault)
            return refuseUsage("say a name, or --default");
        const bool isTakenBack = options->isDefault || options->name->text().empty();
        const std::string name = isTakenBack ? "--default" : options->name->text();
        const Json answer
            = askAndRecord(directory, "app rename " + options->application.text() + " " + name, preference::customNames,
                { { "verb", "rename" }, { "application", options->application.text() },
                    { "name", isTakenBack ? Json(nullptr) : Json(options->name->text()) } });
        if (!answer.value("ok", false))
            return refuse(answer.value("error", "the phone didn't answer"));
        const Json shown = answer.value("name", Json());
        say(options->application.text() + " is called "
                + (shown.is_string() ? shown.get<std::string>() : std::string("nothing")) + " now.",
            answer);
        return ExitStatus::Done;
    };
}

/// A request of the badge; empty for a word that is neither a whole number of 64 bits nor one of the two words.
std::optional<Json> requestFor(const std::string& word)
{
    if (word == "default")
        return Json { { "restored", true } };
    if (word == "clear")
        return Json { { "count", 0 } };
    std::int64_t count = 0;
    const char* const end = word.data() + word.size();
    const auto [last, error] = std::from_chars(word.data(), end, count);
    return error == std::errc() && last == end ? std::optional(Json { { "count", count } }) : std::nullopt;
}

std::string badgeText(const Json& badge)
{
    if (badge.is_null())
        return "none";
    return badge.is_string() ? onOneLine(badge.get_ref<const std::string&>()) : badge.dump();
}

ExitStatus tellBadge(const phone::PhoneDirectory& directory, const std::string& application, Json request)
{
    request.update({ { "verb", "badge" }, { "application", application } });
    const std::string verb = "app badge " + application
        + (request.contains("restored")     ? " default"
                : request.contains("count") ? " " + request["count"].dump()
                                            : "");
    const bool isChange = request.contains("restored") || request.contains("count");
    Json answer = isChange ? askAndRecord(directory, verb, preference::customBadges, request)
                           : askPhone(directory, "SpringBoard", request);
    if (answer["ok"] != true)
        return refuse(answer.value("error", "the phone didn't answer"));
    if (!platform::setDeviceRoot(directory.root()))
        return refuse("can't open " + directory.root() + " as the phone's root");
    const auto entry = [&application, defaults = preferences()](std::string_view key) {
        return phone::toJson(badgeIn(defaults->objectForKey(key), platform::string(application)));
    };
    answer["custom"] = entry(preference::customBadges);
    answer["real"] = entry(preference::realBadges);
    say("Shown: " + badgeText(answer["shown"]) + "\nCustom: " + badgeText(answer["custom"])
            + "\nOf the system: " + badgeText(answer["real"]),
        answer);
    return ExitStatus::Done;
}

/// What badges an application has; with a value, after the owner has chosen one or taken the choice back.
Action badge(Arguments& arguments)
{
    struct Options {
        Word application;
        std::optional<Word> value;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ID", options->application, "bundle identifier").required();
    arguments.add(
        "BADGE", options->value, "a number, \"clear\" (as 0), or \"default\" for the application's own again");
    return [options](const phone::PhoneDirectory& directory) {
        const auto request = options->value ? requestFor(options->value->text()) : Json::object();
        if (!request)
            return refuseUsage("a badge is a whole number of 64 bits, \"clear\" or \"default\"");
        return tellBadge(directory, options->application.text(), *request);
    };
}

constexpr VerbRow rows[] {
    { "app rename", "give an application a name of your choice", rename, "rename" },
    { "app badge", "what badges an application has; choose one", badge, "badge" },
};

} // namespace

extern const VerbRows nameAndBadgeVerbs { rows };

} // namespace cli
