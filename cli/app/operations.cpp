#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string notesOf(const Json& answer)
{
    std::string text;
    for (const Json& note : answer.value("notes", Json::array()))
        text += " " + note.get<std::string>() + ".";
    return text;
}

std::string describeSize(const Json& answer)
{
    return "Its caches take " + answer.at("caches").get<std::string>() + ", all of its own data "
        + answer.at("data").get<std::string>() + ".";
}

std::string describeClearing(const Json& answer)
{
    return "It took " + answer.at("before").get<std::string>() + " and takes " + answer.at("after").get<std::string>()
        + " now." + notesOf(answer);
}

std::string describeRemoval(const Json& answer)
{
    return (answer.at("done").get<bool>() ? "Done." : "The system didn't do it.") + notesOf(answer);
}

/// A verb about one application, which takes its time.
template <const char* Request, const char* What, std::string (*Describe)(const Json& answer)>
Action operation(Arguments& arguments)
{
    const auto application = std::make_shared<Word>();
    arguments.add("ID", *application, "bundle identifier").required();
    return [application](const phone::PhoneDirectory& directory) {
        return tellLongWork(
            directory, "SpringBoard", { { "verb", Request }, { "application", application->text() } }, What, Describe);
    };
}

constexpr char size[] = "app-size";
constexpr char clearCache[] = "app-clear-cache";
constexpr char clearData[] = "app-clear-data";
constexpr char uninstall[] = "app-uninstall";
constexpr char offload[] = "app-offload";
constexpr char sizing[] = "Sizing";
constexpr char clearing[] = "Clearing";
constexpr char removing[] = "Removing";

constexpr VerbRow rows[] {
    { "app size", "the space that an application's data take", operation<size, sizing, describeSize>, size },
    { "app clear-cache", "remove what it keeps in its caches", operation<clearCache, clearing, describeClearing>,
        clearCache },
    { "app clear-data", "end it and remove all of its own data and its permissions",
        operation<clearData, clearing, describeClearing>, clearData },
    { "app uninstall", "remove an application with its data", operation<uninstall, removing, describeRemoval>,
        uninstall },
    { "app offload", "remove an application and keep its data", operation<offload, removing, describeRemoval>,
        offload },
};

} // namespace

extern const VerbRows operationVerbs { rows };

} // namespace cli
