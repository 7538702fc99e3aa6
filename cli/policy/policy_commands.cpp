#include "cli/policy/policy_commands.h"

#include "cli/command/nearest.h"
#include "cli/history/value_text.h"
#include "cli/policy/policy_value.h"
#include "core/preference_domain.h"
#include "phone/control/value_json.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"

namespace cli {

using namespace appledger;
using namespace platform;
using Json = nlohmann::json;

namespace {

std::string knownKeys(const std::string& key)
{
    std::vector<std::string> names;
    std::string list = "known keys:";
    for (const PreferenceKey& row : preferenceKeys()) {
        names.emplace_back(row.name);
        list.append("\n  ").append(row.name).append(row.isPrefix ? "<bundle identifier>" : "");
    }
    const auto meant = nearest(key, names);
    return (meant ? "the nearest is " + *meant + "; " : "") + list;
}

ExitStatus refuseUnknown(const std::string& key)
{
    return refuseUsage("there is no key " + key + "; " + knownKeys(key));
}

bool endsInIdentifier(const PreferenceKey& row, const std::string& key)
{
    return !row.isPrefix || key.size() > row.name.size();
}

/// What the verbs of one key say of it.
Json keyObject(const PreferenceKey& row, const std::string& key, const CommitReport& report)
{
    Json object { { "key", key }, { "value", phone::toJson(preferences()->objectForKey(key)) },
        { "notification", row.notification.empty() ? Json(nullptr) : Json(row.notification) } };
    addCommit(object, report);
    return object;
}

ExitStatus tell(const PreferenceKey& row, const std::string& key, const std::string& text, const CommitReport& report)
{
    if (!report.isDone())
        return refuse(report.problem);
    say(text + describePosting(report) + describeSetAside(report.setAside), keyObject(row, key, report));
    return ExitStatus::Done;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string list;
    for (const std::string& text : texts)
        list.append(list.empty() ? "" : ", ").append(text);
    return list;
}

std::string_view verbOf(ListChange change)
{
    switch (change) {
    case ListChange::Add:
        return "add";
    case ListChange::Remove:
        return "remove";
    case ListChange::Toggle:
        break;
    }
    return "toggle";
}

/// Empty for a value that isn't a list, or no flag.
std::optional<Json> changedValue(const Json& present, ListChange change, bool isFlag, const std::string& identifier)
{
    if (isFlag) {
        if (!present.is_null() && !present.is_boolean() && !present.is_number() && !present.is_string())
            return std::nullopt;
        const auto value = valueFromJson(present);
        return Json(change == ListChange::Toggle ? !boolValue(value.value_or(nil)) : change == ListChange::Add);
    }
    const auto value = valueFromJson(present);
    const auto changed = value ? changedList(*value, change, identifier) : std::nullopt;
    return changed ? std::optional(jsonFromValue(changed->list)) : std::nullopt;
}

bool isOn(const Json& value, bool isFlag, const std::string& identifier)
{
    return isFlag ? value == true
                  : value.is_array() && std::find(value.begin(), value.end(), Json(identifier)) != value.end();
}

} // namespace

std::optional<std::string> openForReading(const phone::PhoneDirectory& directory)
{
    if (const std::string problem = directory.problem(); !problem.empty())
        return problem;
    if (const std::string problem = settlePolicies(directory); !problem.empty())
        warn(problem);
    if (setDeviceRoot(directory.root()))
        return std::nullopt;
    return "can't open " + directory.root() + " as the phone's root";
}

std::string describeSetAside(const std::string& setAside)
{
    return setAside.empty() ? "" : " What couldn't be read there is " + setAside + " now.";
}

std::string describePosting(const CommitReport& report)
{
    if (report.notifications.empty())
        return isVerbose() ? " No notification belongs to it: it is read at each use." : "";
    if (!report.isPosted)
        return " The phone isn't up, so nobody was told.";
    return " Posted " + joined(report.notifications) + ".";
}

std::string nameText(const ValueName& name)
{
    return name.key;
}

std::string describeItem(const ItemChange& item)
{
    const auto shown = [](const Json& value) { return value.is_null() ? "not set" : valueText(value); };
    if (!item.item)
        return nameText(item.name) + ": " + shown(item.before) + " → " + shown(item.after);
    const bool isOfList = item.before == true || item.after == true;
    if (isOfList)
        return nameText(item.name) + (item.after.is_null() ? ": without " : ": with ") + *item.item;
    return nameText(item.name) + ", " + *item.item + ": " + shown(item.before) + " → " + shown(item.after);
}

Json itemJson(const ItemChange& item)
{
    Json object { { item.name.place == ValueName::Place::Domain ? "key" : "file", item.name.key },
        { "before", item.before }, { "after", item.after } };
    const PreferenceKey* const row
        = item.name.place == ValueName::Place::Domain ? preferenceKey(item.name.key) : nullptr;
    if (item.item)
        object["application"] = *item.item;
    else if (row && row->isPrefix)
        object["application"] = item.name.key.substr(std::min(row->name.size(), item.name.key.size()));
    return object;
}

void addCommit(Json& object, const CommitReport& report)
{
    object["ok"] = true;
    object["changed"] = Json::array();
    for (const ItemChange& item : report.items)
        object["changed"].push_back(itemJson(item));
    object["change"] = report.number == 0 ? Json(nullptr) : Json(report.number);
    object["notifications"] = report.notifications;
    object["posted"] = report.isPosted;
    if (!report.setAside.empty())
        object["setAside"] = report.setAside;
    for (const ItemChange& item : report.left)
        object["left"].push_back(itemJson(item));
}

ExitStatus changePolicyList(const phone::PhoneDirectory& directory, ListChange change, const std::string& key,
    const std::vector<std::string>& identifiers)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return refuseUnknown(key);
    const bool isFlag = row->isPrefix && row->type == PreferenceType::Boolean;
    if (!isFlag && row->type != PreferenceType::IdentifierList && row->type != PreferenceType::RowList)
        return refuseUsage(
            key + " isn't a list; 'appledger policy set' takes " + std::string(expectedValue(row->type)));
    if (!isFlag && !endsInIdentifier(*row, key))
        return refuseUsage(std::string(row->name) + " goes on with the bundle identifier that the list belongs to");
    if (isFlag && endsInIdentifier(*row, key))
        return refuseUsage(std::string(row->name) + " takes its bundle identifier as the last word here");
    if (const auto problem = valueProblem(*row, identifiers); problem && row->type == PreferenceType::RowList)
        return refuseUsage(key + " takes " + *problem);
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (!session)
        return refuse(problem);
    std::vector<ValueName> names;
    CommitOptions options { .verb = "policy " + std::string(verbOf(change)) + " " + key + " " + joined(identifiers) };
    for (const std::string& identifier : identifiers) {
        const ValueName name = ValueName::ofKey(isFlag ? std::string(row->name) + identifier : key);
        const auto value = changedValue(session->values().value(name), change, isFlag, identifier);
        if (!value)
            return refuse(name.key + " holds something that isn't " + (isFlag ? "a flag" : "a list"));
        session->want(name, *value);
        names.push_back(name);
        options.confirmed.push_back({ name, isFlag ? std::nullopt : std::optional(identifier) });
    }
    const CommitReport report = session->commit(std::move(options), names);
    std::string text;
    for (std::size_t index = 0; index < names.size(); ++index) {
        const bool isNow = isOn(session->values().value(names[index]), isFlag, identifiers[index]);
        text += (text.empty() ? "" : " ")
            + (isFlag ? names[index].key + (isNow ? " is on." : " is off.")
                      : identifiers[index] + (isNow ? " is on " : " is not on ") + key + " now.");
    }
    return tell(*row, names.back().key, text, report);
}

ExitStatus setPolicy(const phone::PhoneDirectory& directory, const std::string& key, const std::string& value)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return refuseUnknown(key);
    if (!endsInIdentifier(*row, key))
        return refuseUsage(std::string(row->name) + " goes on with a bundle identifier");
    const auto parsed = parsePolicyValue(row->type, value);
    if (!parsed || (row->range.contains && !row->range.contains(*parsed)))
        return refuseUsage(key + " takes " + std::string(allowedValues(*row)));
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (!session)
        return refuse(problem);
    const ValueName name = ValueName::ofKey(key);
    session->want(name, jsonFromValue(*parsed));
    const CommitReport report
        = session->commit({ .verb = "policy set " + key + " " + value, .confirmed = { { name } } }, { name });
    return tell(*row, key, key + " is " + describe(*parsed) + " now.", report);
}

ExitStatus unsetPolicy(const phone::PhoneDirectory& directory, const std::string& key)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return refuseUnknown(key);
    if (!endsInIdentifier(*row, key))
        return refuseUsage(std::string(row->name) + " goes on with a bundle identifier");
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (!session)
        return refuse(problem);
    const ValueName name = ValueName::ofKey(key);
    session->want(name, nullptr);
    const CommitReport report = session->commit({ .verb = "policy unset " + key, .confirmed = { { name } } }, { name });
    return tell(*row, key, key + " is not set now; its default is " + std::string(row->defaultText) + ".", report);
}

} // namespace cli
