#include "cli/policy/policy_commands.h"

#include "cli/command/phone_client.h"
#include "cli/policy/policy_value.h"
#include "cli/policy/side_file_policies.h"
#include "core/preference_domain.h"
#include "phone/control/value_json.h"
#include "platform/darwin/bus.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using namespace appledger;
using namespace platform;
using Json = nlohmann::json;

namespace {

std::string knownKeys()
{
    std::string list = "known keys:";
    for (const PreferenceKey& row : preferenceKeys())
        list.append("\n  ").append(row.name).append(row.isPrefix ? "<bundle identifier>" : "");
    return list;
}

ExitStatus refuseUnknown(const std::string& key)
{
    return refuse("there is no key " + key + "; " + knownKeys());
}

bool endsInIdentifier(const PreferenceKey& row, const std::string& key)
{
    return !row.isPrefix || key.size() > row.name.size();
}

std::optional<std::string> open(const phone::PhoneDirectory& directory)
{
    if (setDeviceRoot(directory.root()))
        return std::nullopt;
    return "can't open " + directory.root() + " as the phone's root";
}

/// After the change, the processes are told to reread.
ExitStatus publish(const phone::PhoneDirectory& directory, const WriteOutcome& outcome, const PreferenceKey& row,
    const std::string& key, std::string_view what)
{
    if (!outcome.isDone())
        return refuse(outcome.problem + describeSetAside(outcome.setAside));
    const bool told = !row.notification.empty() && connectToPhone(directory);
    if (told) {
        CFNotificationCenterPostNotification(row.notification);
        flushBus(std::chrono::seconds { 5 });
    }
    std::ostringstream text;
    text << what;
    if (told)
        text << " Posted " << row.notification << ".";
    else if (row.notification.empty())
        text << " No notification belongs to this key: it is read at each use.";
    else
        text << " The phone isn't up, so nobody was told.";
    text << describeSetAside(outcome.setAside);
    Json object { { "ok", true }, { "key", key }, { "value", phone::toJson(preferences()->objectForKey(key)) },
        { "notification", row.notification.empty() ? Json(nullptr) : Json(row.notification) }, { "posted", told } };
    if (!outcome.setAside.empty())
        object["setAside"] = outcome.setAside;
    say(text.str(), object);
    return ExitStatus::Done;
}

ExitStatus changeFlag(const phone::PhoneDirectory& directory, ListChange change, const PreferenceKey& row,
    const std::string& bundleIdentifier)
{
    const std::string key = std::string(row.name) + bundleIdentifier;
    const PreferenceChange changed = changePreferenceFlag(key, change);
    return publish(directory, changed.outcome, row, key, key + " is " + (changed.isOn ? "on." : "off."));
}

/// Whatever the key holds.
WriteOutcome assign(const std::string& key, const id& value)
{
    return preferences()->change(key, [&value](const id&) { return std::optional(value); });
}

std::string_view allowedValues(const PreferenceKey& row)
{
    return row.range.text.empty() ? expectedValue(row.type) : row.range.text;
}

/// Why the preferences can't be told; empty when they can.
std::optional<std::string> preferenceProblem(const NSUserDefaults& defaults)
{
    const std::string problem = defaults.readProblem();
    if (problem.empty())
        return std::nullopt;
    return "the preferences can't be read: " + std::string(preferenceFile) + ": " + problem;
}

} // namespace

std::optional<std::string> openForReading(const phone::PhoneDirectory& directory)
{
    if (const std::string problem = directory.problem(); !problem.empty())
        return problem;
    return open(directory);
}

std::optional<std::string> openForWriting(const phone::PhoneDirectory& directory)
{
    if (const std::string problem = directory.make(); !problem.empty())
        return problem;
    return open(directory);
}

std::string describeSetAside(const std::string& setAside)
{
    return setAside.empty() ? "" : " What couldn't be read there is " + setAside + " now.";
}

ExitStatus listPolicies(const phone::PhoneDirectory& directory)
{
    if (const auto problem = openForReading(directory))
        return refuse(*problem);
    const auto defaults = preferences();
    if (const auto problem = preferenceProblem(*defaults))
        return refuse(*problem);
    const id all = defaults->dictionaryRepresentation();
    const Json object = phone::toJson(all);
    std::ostringstream text;
    if (pairsOf(all).empty())
        text << "Nothing is set.";
    for (const auto& [key, value] : pairsOf(all)) {
        const auto name = asString(key);
        text << onOneLine(name ? name->text() : describe(key)) << " = " << onOneLine(describe(value))
             << (name && preferenceKey(*name) ? "\n" : "  (not a key of AppLedger)\n");
    }
    say(text.str(), { { "ok", true }, { "policies", object.is_object() ? object : Json::object() } });
    return ExitStatus::Done;
}

ExitStatus listKeys(const phone::PhoneDirectory&)
{
    std::ostringstream text;
    Json keys = Json::array();
    for (const PreferenceKey& row : preferenceKeys()) {
        text << row.name << (row.isPrefix ? "<bundle identifier>" : "") << ": " << allowedValues(row) << "; default "
             << row.defaultText << (row.notification.empty() ? "" : "; posts ") << row.notification << '\n';
        keys.push_back({ { "key", row.name }, { "isPrefix", row.isPrefix }, { "values", allowedValues(row) },
            { "default", row.defaultText },
            { "notification", row.notification.empty() ? Json(nullptr) : Json(row.notification) } });
    }
    say(text.str(), { { "ok", true }, { "keys", keys } });
    return ExitStatus::Done;
}

ExitStatus showPolicies(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier)
{
    if (const auto problem = openForReading(directory))
        return refuse(*problem);
    const auto defaults = preferences();
    for (const auto& problem : { preferenceProblem(*defaults), sideFileProblem() })
        if (problem)
            return refuse(*problem);
    const std::string identifier = asString(string(bundleIdentifier))->text();
    std::ostringstream text;
    Json object = Json::object();
    for (const PreferenceKey& row : preferenceKeys()) {
        id value;
        if (row.isPrefix)
            value = defaults->objectForKey(std::string(row.name) + identifier);
        else if (row.type == PreferenceType::IdentifierList)
            value = itemsOf(defaults->objectForKey(row.name)).contains(identifier) ? boolean(true) : nil;
        else if (row.type == PreferenceType::NumberTable || row.type == PreferenceType::StringTable)
            value = pairsOf(defaults->objectForKey(row.name))[identifier];
        if (!value)
            continue;
        object[std::string(row.name)] = phone::toJson(value);
        text << row.name << (row.isPrefix ? identifier : "") << ": "
             << (!row.isPrefix && row.type == PreferenceType::IdentifierList ? "listed" : onOneLine(describe(value)))
             << '\n';
    }
    describeSideFiles(identifier, text, object);
    say(text.str().empty() ? "Nothing is set for " + identifier + "." : text.str(),
        { { "ok", true }, { "application", identifier }, { "policies", object } });
    return ExitStatus::Done;
}

ExitStatus changePolicyList(const phone::PhoneDirectory& directory, ListChange change, const std::string& key,
    const std::string& bundleIdentifier)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return refuseUnknown(key);
    const bool isFlag = row->isPrefix && row->type == PreferenceType::Boolean;
    if (!isFlag && row->type != PreferenceType::IdentifierList && row->type != PreferenceType::RowList)
        return refuse(key + " isn't a list; 'appledger policy set' takes " + std::string(expectedValue(row->type)));
    if (!isFlag && !endsInIdentifier(*row, key))
        return refuse(std::string(row->name) + " goes on with the bundle identifier that the list belongs to");
    if (isFlag && endsInIdentifier(*row, key))
        return refuse(std::string(row->name) + " takes its bundle identifier as the last word here");
    if (const auto problem = openForWriting(directory))
        return refuse(*problem);
    if (isFlag)
        return changeFlag(directory, change, *row, bundleIdentifier);

    const std::string identifier = asString(string(bundleIdentifier))->text();
    const PreferenceChange changed = changePreferenceList(key, change, identifier);
    return publish(
        directory, changed.outcome, *row, key, identifier + (changed.isOn ? " is on " : " is not on ") + key + " now.");
}

ExitStatus setPolicy(const phone::PhoneDirectory& directory, const std::string& key, const std::string& value)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return refuseUnknown(key);
    if (!endsInIdentifier(*row, key))
        return refuse(std::string(row->name) + " goes on with a bundle identifier");
    const auto parsed = parsePolicyValue(row->type, value);
    if (!parsed || (row->range.contains && !row->range.contains(*parsed)))
        return refuse(key + " takes " + std::string(allowedValues(*row)));
    if (const auto problem = openForWriting(directory))
        return refuse(*problem);
    return publish(directory, assign(key, *parsed), *row, key, key + " is " + describe(*parsed) + " now.");
}

ExitStatus unsetPolicy(const phone::PhoneDirectory& directory, const std::string& key)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return refuseUnknown(key);
    if (!endsInIdentifier(*row, key))
        return refuse(std::string(row->name) + " goes on with a bundle identifier");
    if (const auto problem = openForWriting(directory))
        return refuse(*problem);
    return publish(directory, assign(key, nil), *row, key,
        key + " is not set now; its default is " + std::string(row->defaultText) + ".");
}

} // namespace cli
