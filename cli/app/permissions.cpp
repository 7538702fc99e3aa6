#include "phone/control/permissions.h"
#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string describePermissions(const Json& answer)
{
    std::string text = answer.at("count").is_null() ? "The system can't tell what it may use."
                                                    : std::to_string(answer.at("count").get<long>()) + " decided.";
    for (const Json& one : answer.at("decisions"))
        text += "\n  " + one.at("service").get<std::string>() + ": "
            + (one.at("allowed").get<bool>() ? "allowed" : "denied");
    if (const Json& location = answer.at("location"); location.is_boolean())
        text += std::string("\n  location: ") + (location.get<bool>() ? "allowed" : "denied");
    return text;
}

template <const char* Request> Action aboutApplication(Arguments& arguments)
{
    const auto application = std::make_shared<Word>();
    arguments.add("ID", *application, "bundle identifier").required();
    return [application](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard", { { "verb", Request }, { "application", application->text() } },
            describePermissions);
    };
}

Action decide(Arguments& arguments)
{
    struct Options {
        Word application;
        Word service;
        Word decision;
    };
    const auto options = std::make_shared<Options>();
    std::vector<std::string> words;
    for (const phone::Service& service : phone::services())
        words.emplace_back(service.word);
    arguments.add("ID", options->application, "bundle identifier").required();
    arguments.add("SERVICE", options->service, "what it asks for").required().oneOf(words);
    arguments.add("DECISION", options->decision, "allow or deny").required().oneOf({ "allow", "deny" });
    return [options](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard",
            { { "verb", "permission" }, { "application", options->application.text() },
                { "service", options->service.text() }, { "decision", options->decision.text() } },
            [](const Json&) { return "It is decided."; });
    };
}

constexpr char show[] = "app-permissions";
constexpr char reset[] = "app-reset-permissions";

constexpr VerbRow rows[] {
    { "app permissions", "what the owner has let an application use", aboutApplication<show>, show },
    { "app reset-permissions", "end it and forget what was decided about it", aboutApplication<reset>, reset },
    { "phone permission", "decide what an application may use, as its owner", decide, "permission" },
};

} // namespace

extern const VerbRows permissionVerbs { rows };

} // namespace cli
