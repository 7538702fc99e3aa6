#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string textIn(const Json& object, const char* key)
{
    const Json& value = object.at(key);
    return value.is_string() ? value.get<std::string>() : std::string();
}

std::string describeAlert(const Json& alert)
{
    if (alert.is_null())
        return "No alert is up.";
    std::string text = textIn(alert, "title") + ": " + textIn(alert, "message");
    int number = 0;
    for (const Json& action : alert.at("actions"))
        text += "\n  " + std::to_string(++number) + "  " + textIn(action, "title")
            + (action.at("enabled").get<bool>() ? "" : "  (off)");
    return text;
}

Action alert(Arguments& arguments)
{
    const auto choice = std::make_shared<Word>();
    arguments.add("CHOICE", *choice, "number or title of the button to press");
    return [choice](const phone::PhoneDirectory& directory) {
        return tellAnswer(
            directory, "SpringBoard", { { "verb", "alert" }, { "choice", choice->text() } }, [](const Json& answer) {
                const std::string chosen
                    = answer.contains("chosen") ? "Pressed " + textIn(answer, "chosen") + ". " : std::string();
                return chosen + describeAlert(answer.at("alert"));
            });
    };
}

Action openFolder(Arguments& arguments)
{
    struct Options {
        Word application;
        Word folder { "data" };
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ID", options->application, "bundle identifier").required();
    arguments.add("FOLDER", options->folder, "bundle or data (default)").oneOf({ "bundle", "data" });
    return [options](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard",
            { { "verb", "open-folder" }, { "application", options->application.text() },
                { "folder", options->folder.text() } },
            [](const Json& answer) {
                std::string text;
                for (const Json& note : answer.at("notes"))
                    text += note.get<std::string>() + ".\n";
                return text + (answer.at("alert").is_null() ? "" : describeAlert(answer.at("alert")));
            });
    };
}

constexpr VerbRow rows[] {
    { "phone alert", "the alert on the screen, or press one of its buttons", alert, "alert" },
    { "app open-folder", "open an application's folder in the owner's file manager", openFolder, "open-folder" },
};

} // namespace

extern const VerbRows alertVerbs { rows };

} // namespace cli
