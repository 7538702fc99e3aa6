#include "cli/policy/policy_set.h"

#include "cli/command/nearest.h"
#include "cli/history/value_text.h"
#include "cli/policy/key_texts.h"
#include "cli/policy/policy_value.h"
#include "core/preference_domain.h"

#include <algorithm>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

bool isPolicy(const std::string& key)
{
    const PreferenceKey* const row = preferenceKey(key);
    return row && !isStateOfThePhone(key) && (!row->isPrefix || key.size() > row->name.size());
}

/// Of a set: null where it has nothing under that name.
Json valueIn(const Json& set, const ValueName& name)
{
    if (name.place == ValueName::Place::Domain)
        return set.at("domain").value(name.key, Json());
    return set.value(name.key, Json());
}

std::vector<ValueName> namesOf(const Json& set)
{
    std::vector<ValueName> names;
    for (const auto& [key, value] : set.at("domain").items())
        names.push_back(ValueName::ofKey(key));
    names.push_back(ValueName::muteList());
    names.push_back(ValueName::brightnessTable());
    return names;
}

Json merged(const Json& present, const Json& added)
{
    if (present.is_array() && added.is_array()) {
        Json list = present;
        for (const Json& item : added)
            if (std::find(list.begin(), list.end(), item) == list.end())
                list.push_back(item);
        return list;
    }
    if (present.is_object() && added.is_object()) {
        Json table = present;
        table.update(added);
        return table;
    }
    return added;
}

std::string nearestKey(const std::string& key)
{
    std::vector<std::string> names;
    for (const PreferenceKey& row : preferenceKeys())
        names.emplace_back(row.name);
    const auto meant = nearest(key, names);
    return meant ? "; the nearest is " + *meant : "";
}

std::optional<SetProblem> problemOfKey(const std::string& key, const Json& value)
{
    const PreferenceKey* const row = preferenceKey(key);
    if (!row)
        return SetProblem { "AppLedger has no key " + key + nearestKey(key), key };
    if (isStateOfThePhone(key))
        return SetProblem { key + " is the phone's own state and no policy", key };
    if (row->isPrefix && key.size() <= row->name.size())
        return SetProblem { key + " goes on with a bundle identifier", key };
    if (const auto wanted = valueProblem(*row, value))
        return SetProblem { key + " takes " + *wanted, key };
    return std::nullopt;
}

/// Empty, or what the set has there instead of a list of texts, or a table of parts.
std::optional<SetProblem> problemOfFiles(const Json& set)
{
    const Json mute = set.value("mute", Json::array());
    const bool isList
        = mute.is_array() && std::all_of(mute.begin(), mute.end(), [](const Json& item) { return item.is_string(); });
    if (!isList)
        return SetProblem { "mute takes a list of bundle identifiers", "mute" };
    const Json brightness = set.value("brightness", Json::object());
    const auto isPart = [](const Json& level) { return level.is_number() && level >= 0 && level <= 1; };
    if (!brightness.is_object() || !std::all_of(brightness.begin(), brightness.end(), isPart))
        return SetProblem { "brightness takes a table from bundle identifiers to numbers from 0 to 1", "brightness" };
    return std::nullopt;
}

} // namespace

Json policySetOf(const PolicyValues& values)
{
    Json set = emptySet();
    for (const auto& [key, value] : values.domain().items())
        if (isPolicy(key))
            set["domain"][key] = value;
    if (values.mute().is_array())
        set["mute"] = values.mute();
    if (values.brightness().is_object())
        set["brightness"] = values.brightness();
    return set;
}

Json emptySet()
{
    return { { "format", policySetFormat }, { "version", policySetVersion }, { "domain", Json::object() },
        { "mute", Json::array() }, { "brightness", Json::object() } };
}

std::optional<SetProblem> problemOfSet(const Json& set)
{
    if (!set.is_object() || set.value("format", Json()) != policySetFormat)
        return SetProblem { std::string("it isn't an export of AppLedger's policies: \"format\" isn't \"")
                + policySetFormat + "\"",
            "format" };
    if (set.value("version", Json()) != policySetVersion)
        return SetProblem { "it is of another version than " + std::to_string(policySetVersion), "version" };
    for (const auto& [key, value] : set.items())
        if (key != "format" && key != "version" && key != "domain" && key != "mute" && key != "brightness")
            return SetProblem { "a set of policies has no \"" + key + "\"", key };
    const Json domain = set.value("domain", Json());
    if (!domain.is_object())
        return SetProblem { "\"domain\" is missing, or no object", "domain" };
    for (const auto& [key, value] : domain.items())
        if (auto problem = problemOfKey(key, value))
            return problem;
    return problemOfFiles(set);
}

void wantSet(PolicySession& session, const Json& set, SetMode mode)
{
    std::vector<ValueName> names = namesOf(set);
    if (mode == SetMode::Replace)
        for (const auto& [key, value] : session.values().domain().items())
            if (isPolicy(key) && !set["domain"].contains(key))
                names.push_back(ValueName::ofKey(key));
    for (const ValueName& name : names) {
        const Json present = session.values().value(name);
        const Json wanted = valueIn(set, name);
        // A file that isn't there says the same as an empty one.
        const bool isFileWithNothing = name.place != ValueName::Place::Domain && present.is_null() && wanted.empty();
        if (isFileWithNothing || (mode == SetMode::Merge && wanted.is_null()))
            continue;
        session.want(name, mode == SetMode::Merge ? merged(present, wanted) : wanted);
    }
}

std::vector<ItemChange> differences(const Json& before, const Json& after)
{
    std::vector<ItemChange> items;
    std::vector<ValueName> names = namesOf(before);
    for (const ValueName& name : namesOf(after))
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    std::sort(names.begin(), names.end());
    for (const ValueName& name : names)
        if (const auto change = ValueChange::between(name, valueIn(before, name), valueIn(after, name)))
            std::ranges::move(change->items(), std::back_inserter(items));
    return items;
}

void wantReset(PolicySession& session, const std::vector<std::string>& applications)
{
    const auto isReset = [&applications](const std::string& text) {
        return std::find(applications.begin(), applications.end(), text) != applications.end();
    };
    const auto without = [&isReset](Json value) {
        if (value.is_array()) {
            Json kept = Json::array();
            for (Json& item : value)
                if (!item.is_string() || !isReset(item.get<std::string>()))
                    kept.push_back(std::move(item));
            return kept;
        }
        if (value.is_object())
            for (auto entry = value.begin(); entry != value.end();)
                entry = isReset(entry.key()) ? value.erase(entry) : std::next(entry);
        return value;
    };
    const Json domain = session.values().domain();
    for (const auto& [key, value] : domain.items()) {
        const PreferenceKey* const row = preferenceKey(key);
        if (!isPolicy(key))
            continue;
        if (row->isPrefix && isReset(key.substr(row->name.size())))
            session.want(ValueName::ofKey(key), nullptr);
        else if (row->type != PreferenceType::RowList && (value.is_array() || value.is_object()))
            session.want(ValueName::ofKey(key), without(value));
    }
    for (const ValueName& name : { ValueName::muteList(), ValueName::brightnessTable() })
        session.want(name, without(session.values().value(name)));
}

} // namespace cli
