#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/phone/reasons.h"
#include "core/policies.h"
#include "phone/appstoredaemon/store_roads.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string listed(const Json& texts)
{
    std::string list;
    for (const Json& text : texts)
        list += (list.empty() ? "" : ", ") + text.get<std::string>();
    return list.empty() ? "nothing" : list;
}

std::string argumentText(const Json& argument)
{
    if (argument.is_object())
        return argument.value("domain", "") + " " + std::to_string(argument.value("code", 0)) + " \""
            + argument.value("text", "") + "\"";
    if (argument.is_null())
        return "nil";
    if (argument.is_array())
        return std::to_string(argument.size()) + " items";
    return argument.is_string() ? argument.get<std::string>() : argument.dump();
}

std::string describePurchase(const Json& report)
{
    std::ostringstream out;
    out << report.value("road", "") << " in " << report.value("process", "") << "\nkept: " << listed(report["kept"])
        << "\nrefused: " << listed(report["refused"])
        << (report.contains("why") ? "\n" + whyText(report).substr(1) : "");
    for (const Json& one : report["installed"])
        out << "\ninstalled: " << one.value("application", "") << " " << one.value("applicationVersion", "");
    for (const Json& note : report["notes"])
        out << '\n' << note.get<std::string>();
    if (!report.value("requestExists", true))
        out << "\nThere is no request.";
    for (const Json& call : report["completions"]) {
        std::string arguments;
        for (const Json& argument : call)
            arguments += (arguments.empty() ? "" : ", ") + argumentText(argument);
        out << "\ncompletion: (" << arguments << ")";
    }
    return out.str();
}

std::string describeUpdates(const Json& report)
{
    std::ostringstream out;
    out << "Updates that " << report.value("process", "") << " shows:";
    for (const Json& update : report["updates"]) {
        out << "\n    " << update.value("application", "");
        if (update["newestVersion"].is_string())
            out << " " << update["newestVersion"].get<std::string>();
        else if (!update.value("isUpdateAvailable", false) && !update.value("updateAvailable", false))
            out << " none";
        out << whyText(update);
    }
    return out.str();
}

struct StoreOptions {
    std::vector<Word> identifiers;
    Word road { "request" };
    Word process; ///< of the phone's; "" for the one in which the road usually begins
};

void addProcess(Arguments& arguments, StoreOptions& options)
{
    arguments.add("--process", options.process, "where: AppStore, appstored, itunesstored or SpringBoard");
}

Action showUpdates(Arguments& arguments)
{
    const auto options = std::make_shared<StoreOptions>();
    addProcess(arguments, *options);
    return [options](const phone::PhoneDirectory& directory) {
        return tellAnswer(
            directory, options->process.empty() ? "AppStore" : options->process.text(), { { "verb", "store-updates" } },
            [&directory](Json& report) {
                constexpr std::string_view key = appledger::policy::blockedUpdate.key;
                for (Json& update : report["updates"]) {
                    update["application"] = update.value("bundleIdentifier", "");
                    update.erase("bundleIdentifier");
                    if (isListed(directory, key, update["application"]))
                        addListReason(update, key, update["application"]);
                }
            },
            describeUpdates);
    };
}

/// Says what was kept, what was refused, and what the completion received. Done also when all was refused: the refusal
/// is the answer.
Action buy(Arguments& arguments)
{
    const auto options = std::make_shared<StoreOptions>();
    std::vector<std::string> roads;
    for (const phone::StoreRoad& road : phone::storeRoads())
        roads.emplace_back(road.name);
    arguments.add("ID", options->identifiers, "bundle identifiers").required();
    arguments.add("--road", options->road, "the method at which it begins (default request)").oneOf(roads);
    addProcess(arguments, *options);
    return [options](const phone::PhoneDirectory& directory) {
        const phone::StoreRoad& road = *phone::storeRoadNamed(options->road.text());
        const std::vector<std::string> identifiers(options->identifiers.begin(), options->identifiers.end());
        return tellAnswer(
            directory, options->process.empty() ? std::string(road.process) : options->process.text(),
            { { "verb", "store-buy" }, { "road", options->road.text() }, { "applications", identifiers } },
            [&](Json& report) { addPurchaseReason(report, directory, identifiers, std::string(road.method)); },
            describePurchase);
    };
}

constexpr VerbRow rows[] {
    { "phone store updates", "the updates that the store shows", showUpdates, "store-updates" },
    { "phone store buy", "buy applications, or their updates", buy, "store-buy" },
};

} // namespace

extern const VerbRows storeVerbs { rows };

} // namespace cli
