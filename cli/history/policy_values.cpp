#include "cli/history/policy_values.h"

#include "cli/history/value_text.h"
#include "core/notification_names.h"
#include "core/preference_domain.h"
#include "core/side_file.h"
#include "platform/foundation/user_defaults.h"
#include "platform/foundation/values.h"
#include "state/app_brightness_manager.h"
#include "state/app_mute_manager.h"

#include <cerrno>

namespace cli {

using namespace appledger;
using namespace platform;
using Json = nlohmann::json;

namespace {

/// Null also for a file that can't be read, which is noted unless something was before.
Json readSideFile(const std::string& path, const PropertyListFileKind& kind, std::string& problem)
{
    PropertyListFile file(path, kind);
    Json content = jsonFromValue(file.read());
    if (!file.problem().empty() && problem.empty())
        problem = path + " can't be read: " + file.problem();
    return content;
}

/// The value that a change gives, noted in `written`; empty to leave the present one.
std::optional<id> next(const ValueChange& change, ValueChange::Direction direction, ValueChange::Clash clash,
    const Json& present, WrittenChange& written)
{
    written.before = written.after = present;
    const auto wanted = change.carriedOut(present, direction, clash);
    if (!wanted)
        return std::nullopt;
    const auto value = valueFromJson(*wanted);
    if (!value) {
        written.outcome = refusedValue(change.name().key);
        return std::nullopt;
    }
    written.after = *wanted;
    return value;
}

} // namespace

PolicyValues PolicyValues::ofDevice()
{
    PolicyValues values;
    const auto defaults = preferences();
    if (const std::string problem = defaults->readProblem(); !problem.empty())
        values.problem_ = "the preferences can't be read: " + std::string(preferenceFile) + ": " + problem;
    for (const auto& [key, value] : pairsOf(defaults->dictionaryRepresentation()))
        if (const auto name = asString(key))
            values.domain_[name->text()] = jsonFromValue(value);
    values.mute_ = readSideFile(GetAppMutePrefPath(), sideFileWithArray, values.problem_);
    values.brightness_ = readSideFile(appBrightnessPreferencePath(), sideFileWithDictionary, values.problem_);
    return values;
}

Json PolicyValues::value(const ValueName& name) const
{
    switch (name.place) {
    case ValueName::Place::MuteFile:
        return mute_;
    case ValueName::Place::BrightnessFile:
        return brightness_;
    case ValueName::Place::Domain:
        break;
    }
    return domain_.value(name.key, Json());
}

void PolicyValues::set(const ValueName& name, Json value)
{
    switch (name.place) {
    case ValueName::Place::MuteFile:
        mute_ = std::move(value);
        return;
    case ValueName::Place::BrightnessFile:
        brightness_ = std::move(value);
        return;
    case ValueName::Place::Domain:
        break;
    }
    if (value.is_null())
        domain_.erase(name.key);
    else
        domain_[name.key] = std::move(value);
}

WrittenChange writeChange(const ValueChange& change, ValueChange::Direction direction, ValueChange::Clash clash)
{
    WrittenChange written;
    const bool isOfDomain = change.name().place == ValueName::Place::Domain;
    if (isOfDomain) {
        WriteOutcome outcome = preferences()->change(change.name().key,
            [&](const id& present) { return next(change, direction, clash, jsonFromValue(present), written); });
        if (written.outcome.isDone())
            written.outcome = std::move(outcome);
        return written;
    }
    const bool isMute = change.name().place == ValueName::Place::MuteFile;
    const std::string path = isMute ? GetAppMutePrefPath() : appBrightnessPreferencePath();
    const PropertyListFileKind& kind = isMute ? sideFileWithArray : sideFileWithDictionary;
    bool changes = false;
    WriteOutcome outcome = changePropertyListFile(path, kind, [&](const id& present) -> std::optional<id> {
        const auto value = next(change, direction, clash, jsonFromValue(present), written);
        changes = value.has_value();
        // The files have no way to say that there is no list but an empty one.
        if (value && !*value)
            return isMute ? emptyArray() : dictionary({});
        return value;
    });
    if (written.outcome.isDone())
        written.outcome = changes ? openedToEveryWriter(path, std::move(outcome)) : std::move(outcome);
    return written;
}

std::string_view notificationOf(const ValueName& name)
{
    switch (name.place) {
    case ValueName::Place::MuteFile:
        return "";
    case ValueName::Place::BrightnessFile:
        return notification::brightnessChanged;
    case ValueName::Place::Domain:
        break;
    }
    const PreferenceKey* const row = preferenceKey(name.key);
    return row ? row->notification : "";
}

} // namespace cli
