#include "cli/command/arguments.h"
#include "cli/command/part.h"
#include "cli/command/verb_rows.h"
#include "cli/history/value_text.h"
#include "cli/policy/features.h"
#include "cli/policy/policy_commands.h"
#include "cli/policy/policy_value.h"
#include "core/paths.h"
#include "platform/foundation/values.h"
#include "state/app_brightness_manager.h"
#include "state/app_mute_manager.h"

#include <memory>

/// The verbs that say in words what is decided about an application.

namespace cli {

using Json = nlohmann::json;

namespace {

enum class Wanted { On, Off };

struct WordOptions {
    std::vector<Word> applications;
    Word value; ///< of a brightness
    std::optional<Word> duration;
    bool isStrict = false;
};

void addCommonOptions(Arguments& arguments, WordOptions& options)
{
    arguments.add("--for", options.duration, "take it back after that time: 90s, 5m, 2h, 1d").shownAs("TIME");
    arguments.addStrict(options.isStrict);
}

/// How a verb stands in the history, and when it takes itself back. Empty for a time that is none.
std::optional<CommitOptions> commitOptions(std::string verb, const WordOptions& options)
{
    CommitOptions commit { .verb = std::move(verb) };
    for (const Word& application : options.applications)
        commit.verb += " " + application.text();
    if (!options.value.empty())
        commit.verb += " " + options.value.text();
    if (!options.duration)
        return commit;
    const auto seconds = parseDuration(options.duration->text());
    if (!seconds)
        return std::nullopt;
    commit.verb += " --for " + options.duration->text();
    commit.until = secondsNow() + *seconds;
    return commit;
}

ExitStatus refuseDuration(const Word& duration)
{
    return refuseUsage(duration.text() + " is no time: 90s, 5m, 2h or 1d, and no more than a year");
}

std::vector<std::string> textsOf(const std::vector<Word>& words)
{
    return { words.begin(), words.end() };
}

std::string describeEnd(const CommitOptions& options, const WordOptions& words, const CommitReport& report)
{
    if (!options.until)
        return "";
    return report.number == 0 ? " It was so already, so that nothing takes itself back."
                              : " It takes itself back after " + words.duration->text() + ".";
}

std::optional<Json> changed(const Feature& feature, const Json& present, Wanted wanted, const std::string& application)
{
    if (feature.kind == Feature::Kind::Flag)
        return wanted == Wanted::On ? Json(true) : present.is_null() ? Json() : Json(false);
    const auto value = valueFromJson(present);
    const auto list = value
        ? appledger::changedList(*value, wanted == Wanted::On ? ListChange::Add : ListChange::Remove, application)
        : std::nullopt;
    if (!list)
        return std::nullopt;
    // Off a list that there isn't nobody has to be taken.
    return present.is_null() && wanted == Wanted::Off ? present : jsonFromValue(list->list);
}

ExitStatus changeFeature(
    const phone::PhoneDirectory& directory, const Feature& feature, Wanted wanted, const WordOptions& options)
{
    const std::string verb(wanted == Wanted::On ? feature.onVerb : feature.offVerb);
    auto commit = commitOptions(verb, options);
    if (!commit)
        return refuseDuration(*options.duration);
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (!session)
        return refuse(problem);
    std::vector<ValueName> names;
    for (const Word& application : options.applications) {
        const ValueName name = feature.valueName(application);
        auto value = changed(feature, session->values().value(name), wanted, application);
        if (!value)
            return refuse(name.key + " holds something that isn't a list");
        session->want(name, std::move(*value));
        names.push_back(name);
        const bool isFlag = feature.kind == Feature::Kind::Flag;
        commit->confirmed.push_back({ name, isFlag ? std::nullopt : std::optional(application.text()) });
    }
    const CommitOptions kept = *commit;
    const CommitReport report = session->commit(std::move(*commit), names);
    if (!report.isDone())
        return refuse(report.problem);
    std::string text;
    for (const Word& application : options.applications)
        text += application.text() + " " + std::string(wanted == Wanted::On ? feature.holds : feature.doesNotHold)
            + ". ";
    text.pop_back();
    Json object { { "applications", textsOf(options.applications) }, { "application", options.applications[0].text() },
        { "rule", feature.key }, { "isOn", wanted == Wanted::On } };
    if (feature.kind == Feature::Kind::MuteFile) {
        object["muted"] = wanted == Wanted::On;
        object["file"] = appledger::GetAppMutePrefPath();
    }
    if (kept.until)
        object["until"] = *kept.until;
    addCommit(object, report);
    say(text + describeEnd(kept, options, report) + describePosting(report) + describeSetAside(report.setAside),
        object);
    return ExitStatus::Done;
}

template <const Feature& F, Wanted W> Action word(Arguments& arguments)
{
    const auto options = std::make_shared<WordOptions>();
    arguments.add("ID", options->applications, "applications, by identifier or name").required();
    addCommonOptions(arguments, *options);
    return [options](const phone::PhoneDirectory& directory) { return changeFeature(directory, F, W, *options); };
}

/// Which of two applications may open which.
template <Wanted W> Action pair(Arguments& arguments, std::string_view prefix, std::string_view verb, bool isOfSource)
{
    struct Options {
        Word source;
        Word destination;
        bool isStrict = false;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("SOURCE", options->source, "the application that opens another").required().shownAs("ID");
    arguments.add("DESTINATION", options->destination, "the one that it opens").required().shownAs("ID");
    arguments.addStrict(options->isStrict);
    return [options, prefix, verb, isOfSource](const phone::PhoneDirectory& directory) {
        const Word& owner = isOfSource ? options->source : options->destination;
        const Word& listed = isOfSource ? options->destination : options->source;
        std::string problem;
        const auto session = PolicySession::open(directory, problem);
        if (!session)
            return refuse(problem);
        const ValueName name = ValueName::ofKey(std::string(prefix) + owner.text());
        auto value = changed(feature::block, session->values().value(name), W, listed);
        if (!value)
            return refuse(name.key + " holds something that isn't a list");
        session->want(name, value->is_array() && value->empty() ? Json() : *value);
        const CommitReport report = session->commit(
            { .verb = std::string(verb) + " " + options->source.text() + " " + options->destination.text(),
                .confirmed = { { name, listed.text() } } },
            { name });
        if (!report.isDone())
            return refuse(report.problem);
        Json object { { "application", options->source.text() }, { "destination", options->destination.text() },
            { "rule", name.key }, { "isOn", W == Wanted::On } };
        addCommit(object, report);
        say(name.key + (W == Wanted::On ? " lists " : " doesn't list ") + listed.text() + "." + describePosting(report),
            object);
        return ExitStatus::Done;
    };
}

Action forbid(Arguments& arguments)
{
    return pair<Wanted::On>(arguments, appledger::redirectKey::forbiddenDestinations, "policy forbid", true);
}

Action unforbid(Arguments& arguments)
{
    return pair<Wanted::Off>(arguments, appledger::redirectKey::forbiddenDestinations, "policy unforbid", true);
}

Action except(Arguments& arguments)
{
    return pair<Wanted::On>(arguments, appledger::redirectKey::allowedSources, "policy except", false);
}

Action unexcept(Arguments& arguments)
{
    return pair<Wanted::Off>(arguments, appledger::redirectKey::allowedSources, "policy unexcept", false);
}

std::string percentText(double level)
{
    return std::to_string(static_cast<int>(level * 100 + 0.5)) + " %";
}

ExitStatus changeBrightness(
    const phone::PhoneDirectory& directory, const WordOptions& options, std::optional<double> level)
{
    auto commit = commitOptions("policy brightness", options);
    if (!commit)
        return refuseDuration(*options.duration);
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (!session)
        return refuse(problem);
    const ValueName name = ValueName::brightnessTable();
    Json table = session->values().value(name);
    for (const Word& application : options.applications) {
        if (level)
            table[application.text()] = static_cast<double>(static_cast<float>(*level));
        else if (table.is_object())
            table.erase(application.text());
        commit->confirmed.push_back({ name, application.text() });
    }
    session->want(name, table);
    const CommitOptions kept = *commit;
    const CommitReport report = session->commit(std::move(*commit), { name });
    if (!report.isDone())
        return refuse(report.problem);
    std::string text;
    for (const Word& application : options.applications)
        text += application.text()
            + (level ? " has the brightness " + percentText(*level) + " while it is in front. "
                     : " has no brightness of its own. ");
    text.pop_back();
    Json object { { "applications", textsOf(options.applications) }, { "application", options.applications[0].text() },
        { "brightness", level ? session->values().value(name).value(options.applications[0].text(), Json()) : Json() },
        { "file", appledger::appBrightnessPreferencePath() }, { "notification", notificationOf(name) } };
    if (kept.until)
        object["until"] = *kept.until;
    addCommit(object, report);
    say(text + describeEnd(kept, options, report) + describePosting(report) + describeSetAside(report.setAside),
        object);
    return ExitStatus::Done;
}

Action brightness(Arguments& arguments)
{
    const auto options = std::make_shared<WordOptions>();
    arguments.addApplicationsAndValue(
        options->applications, options->value, "how bright: 0.8, 80%, 80 %, or off", "80%");
    addCommonOptions(arguments, *options);
    return [options](const phone::PhoneDirectory& directory) {
        const std::string& value = options->value;
        if (value == "off" || value == "-1")
            return changeBrightness(directory, *options, std::nullopt);
        const auto level = parsePart(value);
        return level ? changeBrightness(directory, *options, level)
                     : refuseUsage("a brightness is " + std::string(expectedPart) + ", or off; not " + value);
    };
}

template <const Feature& F> constexpr VerbRow on()
{
    return { F.onVerb, F.onDescription, word<F, Wanted::On> };
}

template <const Feature& F> constexpr VerbRow off()
{
    return { F.offVerb, F.offDescription, word<F, Wanted::Off> };
}

using namespace feature;

constexpr VerbRow rows[] {
    on<block>(),
    off<block>(),
    on<lock>(),
    off<lock>(),
    on<hide>(),
    off<hide>(),
    on<protect>(),
    off<protect>(),
    on<freeze>(),
    off<freeze>(),
    on<silence>(),
    off<silence>(),
    on<hush>(),
    off<hush>(),
    on<feature::mute>(),
    off<feature::mute>(),
    { "policy brightness", "give applications a brightness of their own while they are in front", brightness },
    on<clean>(),
    off<clean>(),
    on<keepAwake>(),
    off<keepAwake>(),
    on<keepAlive>(),
    off<keepAlive>(),
    on<hold>(),
    off<hold>(),
    on<push>(),
    off<push>(),
    on<confine>(),
    off<confine>(),
    on<shield>(),
    off<shield>(),
    on<noStore>(),
    off<noStore>(),
    on<noSafari>(),
    off<noSafari>(),
    on<lenient>(),
    off<lenient>(),
    on<pretend>(),
    off<pretend>(),
    { "policy forbid", "have one application not open a certain other one", forbid },
    { "policy unforbid", "let it", unforbid },
    { "policy except", "let one application open another, whatever else forbids it", except },
    { "policy unexcept", "have the other rules hold for the two again", unexcept },
};

} // namespace

extern const VerbRows featureVerbs { rows };

} // namespace cli
