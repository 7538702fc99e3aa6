#include "cli/policy/policy_reading.h"

#include "cli/command/application_names.h"
#include "cli/history/policy_values.h"
#include "cli/policy/features.h"
#include "cli/policy/key_texts.h"
#include "cli/policy/policy_commands.h"
#include "cli/policy/policy_value.h"
#include "core/preference_domain.h"
#include "phone/control/value_json.h"
#include "platform/foundation/user_defaults.h"
#include "platform/foundation/values.h"

#include <map>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

/// One thing that is set.
struct Fact {
    std::string application; ///< "" for what is set for all
    std::string key; ///< "mute" and "brightness" of the files
    std::string text; ///< "doesn't open"
    Json value; ///< of the application; true where it is on a list
};

std::string keyOf(const PreferenceKey* row, const std::string& key)
{
    return row && row->isPrefix ? std::string(row->name) : key;
}

/// "ALBlockedLaunchApps" on the one side, "doesn't open" on the other.
std::string textOf(const PreferenceKey* row, const std::string& key, const Json& value)
{
    const Feature* const feature = featureOf(keyOf(row, key));
    if (feature && value.is_boolean())
        return std::string(value == true ? feature->holds : feature->doesNotHold);
    const std::string shown = value.is_string() ? value.get<std::string>() : valueText(value);
    if (key == preference::customNames)
        return "is called " + shown;
    if (key == preference::customBadges)
        return "has the badge " + shown;
    return row && row->isPrefix ? std::string(keyText(*row)) + ": " + shown : shown;
}

void addFacts(const std::string& key, const Json& value, std::vector<Fact>& facts)
{
    const PreferenceKey* const row = preferenceKey(key);
    const bool isOfApplications = row && !row->isPrefix
        && (row->type == PreferenceType::IdentifierList || row->type == PreferenceType::NumberTable
            || row->type == PreferenceType::StringTable);
    if (isOfApplications && value.is_array()) {
        for (const Json& item : value)
            if (item.is_string())
                facts.push_back({ item.get<std::string>(), key, textOf(row, key, true), true });
    } else if (isOfApplications && value.is_object()) {
        for (const auto& [application, entry] : value.items())
            facts.push_back({ application, key, textOf(row, key, entry), entry });
    } else if (row && row->isPrefix && key.size() > row->name.size()) {
        facts.push_back({ key.substr(row->name.size()), key, textOf(row, key, value), value });
    } else {
        facts.push_back({ "", key, textOf(row, key, value) + (row ? "" : "  (not a key of AppLedger)"), value });
    }
}

std::vector<Fact> factsOf(const PolicyValues& values)
{
    std::vector<Fact> facts;
    for (const auto& [key, value] : values.domain().items())
        addFacts(key, value, facts);
    for (const Json& item : values.mute())
        if (item.is_string())
            facts.push_back({ item.get<std::string>(), "mute", std::string(feature::mute.holds), true });
    for (const auto& [application, level] : values.brightness().items())
        facts.push_back({ application, "brightness", "has a brightness of its own: " + valueText(level), level });
    return facts;
}

std::string listedBy(const std::vector<Fact>& facts, Grouping grouping, const std::vector<KnownApplication>& known)
{
    std::map<std::string, std::string> groups;
    for (const Fact& fact : facts) {
        const std::string who = fact.application.empty() ? "" : onOneLine(applicationLabel(known, fact.application));
        if (grouping == Grouping::Application)
            groups[who] += "  " + onOneLine(fact.text) + "  (" + onOneLine(fact.key) + ")\n";
        else
            groups[fact.key] += "  " + (who.empty() ? onOneLine(fact.text) : who + ": " + onOneLine(fact.text)) + "\n";
    }
    std::string text;
    for (const auto& [title, lines] : groups)
        text += (title.empty() ? "For all applications" : onOneLine(title)) + "\n" + lines;
    return text;
}

std::string listedByKey(const PolicyValues& values)
{
    std::string text;
    for (const auto& [key, value] : values.domain().items())
        text += onOneLine(key) + " = " + onOneLine(value.dump(-1, ' ', false, Json::error_handler_t::replace))
            + (preferenceKey(key) ? "\n" : "  (not a key of AppLedger)\n");
    for (const auto& [name, value] :
        { std::pair("mute", &values.mute()), std::pair("brightness", &values.brightness()) })
        if (!value->empty())
            text += std::string(name) + " = " + onOneLine(value->dump()) + "\n";
    return text;
}

} // namespace

ExitStatus listPolicies(const phone::PhoneDirectory& directory, Grouping grouping)
{
    if (const auto problem = openForReading(directory))
        return refuse(*problem);
    const PolicyValues values = PolicyValues::ofDevice();
    if (!values.problem().empty())
        return refuse(values.problem());
    const std::vector<Fact> facts = factsOf(values);
    Json applications = Json::object();
    for (const Fact& fact : facts)
        if (!fact.application.empty()) {
            const PreferenceKey* const row = preferenceKey(fact.key);
            applications[fact.application][keyOf(row, fact.key)] = fact.value;
        }
    std::string text
        = grouping == Grouping::Key ? listedByKey(values) : listedBy(facts, grouping, knownApplications(directory));
    // As the property list has them: data and dates are told, not written out.
    const Json policies = phone::toJson(preferences()->dictionaryRepresentation());
    say(text.empty() ? "Nothing is set." : text,
        { { "policies", policies.is_object() ? policies : Json::object() },
            { "mute", values.mute().is_null() ? Json::array() : values.mute() },
            { "brightness", values.brightness().is_null() ? Json::object() : values.brightness() },
            { "applications", applications } });
    return ExitStatus::Done;
}

ExitStatus listKeys(const phone::PhoneDirectory&)
{
    std::string text;
    Json keys = Json::array();
    for (const PreferenceKey& row : preferenceKeys()) {
        const std::vector<std::string> readers = readersOf(row);
        const Feature* const feature = featureOf(row.name);
        std::string processes;
        for (const std::string& reader : readers)
            processes += (processes.empty() ? "" : ", ") + reader;
        text.append(row.name).append(row.isPrefix ? "<bundle identifier>" : "").append("\n    ").append(keyText(row));
        text.append("\n    takes ").append(allowedValues(row)).append("; default ").append(row.defaultText);
        text.append("\n    read by ").append(processes).append(row.reloadName.empty() ? ", at each use" : "");
        text.append(row.notification.empty() ? "; nobody is told" : "; told by ").append(row.notification);
        if (feature)
            text.append("\n    in words: appledger ").append(feature->onVerb).append(", ").append(feature->offVerb);
        text += '\n';
        keys.push_back({ { "key", row.name }, { "isPrefix", row.isPrefix }, { "values", allowedValues(row) },
            { "default", row.defaultText }, { "description", keyText(row) }, { "readBy", readers },
            { "atEachUse", row.reloadName.empty() },
            { "verbs", feature ? Json { feature->onVerb, feature->offVerb } : Json::array() },
            { "notification", row.notification.empty() ? Json(nullptr) : Json(row.notification) } });
    }
    say(text, { { "keys", keys } });
    return ExitStatus::Done;
}

ExitStatus showPolicies(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier)
{
    if (const auto problem = openForReading(directory))
        return refuse(*problem);
    const PolicyValues values = PolicyValues::ofDevice();
    if (!values.problem().empty())
        return refuse(values.problem());
    const std::string label = applicationLabel(knownApplications(directory), bundleIdentifier);
    std::string text;
    Json object = Json::object();
    for (const Fact& fact : factsOf(values)) {
        if (fact.application != bundleIdentifier || isStateOfThePhone(fact.key))
            continue;
        object[keyOf(preferenceKey(fact.key), fact.key)] = fact.value;
        text += "  " + onOneLine(fact.text) + "  (" + onOneLine(fact.key) + ")\n";
    }
    say(text.empty() ? "Nothing is set for " + label + "." : onOneLine(label) + "\n" + text,
        { { "application", bundleIdentifier }, { "policies", object } });
    return ExitStatus::Done;
}

} // namespace cli
