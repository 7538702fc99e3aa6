#include "cli/phone/phone_store.h"

#include "cli/command/phone_client.h"
#include "phone/appstoredaemon/store_roads.h"

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
        << "\nrefused: " << listed(report["refused"]);
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
        out << "\n    " << update.value("bundleIdentifier", "");
        if (update["newestVersion"].is_string())
            out << " " << update["newestVersion"].get<std::string>();
        else if (!update.value("isUpdateAvailable", false) && !update.value("updateAvailable", false))
            out << " none";
    }
    return out.str();
}

ExitStatus answer(const phone::PhoneDirectory& directory, const std::string& process, const Json& request,
    std::string (*describe)(const Json&))
{
    if (!connectToPhone(directory))
        return refuse("the phone at " + directory.root() + " isn't up");
    const Json report = askPhone(process, request);
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say(describe(report), report);
    return ExitStatus::Done;
}

} // namespace

std::vector<std::string> storeRoadNames()
{
    std::vector<std::string> names;
    for (const phone::StoreRoad& road : phone::storeRoads())
        names.emplace_back(road.name);
    return names;
}

ExitStatus phoneStoreUpdates(const phone::PhoneDirectory& directory, const StoreOptions& options)
{
    return answer(directory, options.process.empty() ? "AppStore" : options.process, { { "verb", "store-updates" } },
        describeUpdates);
}

ExitStatus phoneStoreBuy(const phone::PhoneDirectory& directory, const StoreOptions& options)
{
    const phone::StoreRoad* const road = phone::storeRoadNamed(options.road);
    if (!road)
        return refuse("the store has no road called " + options.road);
    return answer(directory, options.process.empty() ? std::string(road->process) : options.process,
        { { "verb", "store-buy" }, { "road", options.road }, { "applications", options.identifiers } },
        describePurchase);
}

} // namespace cli
