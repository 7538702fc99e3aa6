#include "cli/policy/policy_commands.h"

#include "cli/command/phone_client.h"
#include "cli/policy/policy_value.h"
#include "cli/policy/property_list_json.h"
#include "cli/policy/side_file_policies.h"
#include "core/preference_domain.h"
#include "platform/darwin/bus.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
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

/// A root that doesn't exist yet is a phone on which nothing is set.
void openForReading(const phone::PhoneDirectory& directory)
{
    setDeviceRoot(directory.root());
}

/// The writer's steps after the change: publish, and only then tell the processes to reread.
ExitStatus publish(const phone::PhoneDirectory& directory, NSUserDefaults& defaults, const PreferenceKey& row,
    const std::string& key, std::string_view what)
{
    if (!defaults.synchronize())
        return refuse("can't write the preferences: " + std::string(std::strerror(defaults.lastError())));
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
    const id value = defaults.objectForKey(key);
    say(text.str(),
        { { "ok", true }, { "key", key }, { "value", toJson(value) },
            { "notification", row.notification.empty() ? Json(nullptr) : Json(row.notification) },
            { "posted", told } });
    return ExitStatus::Done;
}

ExitStatus changeFlag(const phone::PhoneDirectory& directory, ListChange change, const PreferenceKey& row,
    const std::string& bundleIdentifier)
{
    const std::string key = std::string(row.name) + bundleIdentifier;
    const auto defaults = preferences();
    const bool wanted = change == ListChange::Toggle ? !defaults->boolForKey(key) : change == ListChange::Add;
    defaults->setBool(wanted, key);
    return publish(directory, *defaults, row, key, key + " is " + (wanted ? "on." : "off."));
}

} // namespace

std::optional<std::string> openForWriting(const phone::PhoneDirectory& directory)
{
    std::error_code failed;
    std::filesystem::create_directories(directory.root(), failed);
    if (failed)
        return "can't make " + directory.root() + ": " + failed.message();
    if (!setDeviceRoot(directory.root()))
        return "can't open " + directory.root() + " as the phone's root";
    return std::nullopt;
}

ExitStatus listPolicies(const phone::PhoneDirectory& directory)
{
    openForReading(directory);
    const id all = preferences()->dictionaryRepresentation();
    const Json object = toJson(all);
    std::ostringstream text;
    if (pairsOf(all).empty())
        text << "Nothing is set.";
    for (const auto& [key, value] : pairsOf(all)) {
        const auto name = asString(key);
        text << (name ? name->text() : describe(key)) << " = " << describe(value)
             << (name && preferenceKey(*name) ? "\n" : "  (not a key of AppLedger)\n");
    }
    say(text.str(), { { "ok", true }, { "policies", object.is_object() ? object : Json::object() } });
    return ExitStatus::Done;
}

ExitStatus showPolicies(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier)
{
    openForReading(directory);
    const auto defaults = preferences();
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
        object[std::string(row.name)] = toJson(value);
        text << row.name << (row.isPrefix ? identifier : "") << ": "
             << (!row.isPrefix && row.type == PreferenceType::IdentifierList ? "listed" : describe(value)) << '\n';
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

    const auto defaults = preferences();
    const ArrayValue present = itemsOf(defaults->objectForKey(key));
    const id item = string(bundleIdentifier);
    const bool listed = present.contains(item);
    const bool wanted = change == ListChange::Toggle ? !listed : change == ListChange::Add;
    std::vector<id> items(present.begin(), present.end());
    if (listed && !wanted)
        std::erase_if(items, [&item](const id& present) { return isEqual(present, item); });
    else if (!listed && wanted)
        items.push_back(item);
    defaults->setObject(array(std::move(items)), key);
    return publish(
        directory, *defaults, *row, key, asString(item)->text() + (wanted ? " is on " : " is not on ") + key + " now.");
}

ExitStatus setPolicy(const phone::PhoneDirectory& directory, const std::string& key, const std::string& value)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return refuseUnknown(key);
    if (!endsInIdentifier(*row, key))
        return refuse(std::string(row->name) + " goes on with a bundle identifier");
    const auto parsed = parsePolicyValue(row->type, value);
    if (!parsed)
        return refuse(key + " takes " + std::string(expectedValue(row->type)));
    if (const auto problem = openForWriting(directory))
        return refuse(*problem);
    const auto defaults = preferences();
    defaults->setObject(*parsed, key);
    return publish(directory, *defaults, *row, key, key + " is " + describe(*parsed) + " now.");
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
    const auto defaults = preferences();
    defaults->removeObject(key);
    return publish(directory, *defaults, *row, key,
        key + " is not set now; its default is " + std::string(row->defaultText) + ".");
}

} // namespace cli
