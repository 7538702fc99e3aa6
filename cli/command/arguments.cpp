#include "cli/command/arguments.h"

#include "phone/process/process_definition.h"

#include <CLI/CLI.hpp>
#include <charconv>

namespace cli {

namespace {

constexpr const char* applicationName = "ID";

ArgumentKind kindNamed(std::string_view name)
{
    if (name == "KEY")
        return ArgumentKind::Key;
    if (name == "PROCESS" || name == "--process")
        return ArgumentKind::Process;
    return name == "FILE" || name == "FOLDER" ? ArgumentKind::File : ArgumentKind::Other;
}

} // namespace

Argument::Argument(CLI::App& verb, CLI::Option* option, VerbDetails& details, ApplicationArgument target)
    : verb_(verb)
    , option_(option)
    , verbDetails_(details)
    , index_(details.arguments.size())
    , target_(target)
{
    const bool isPositional = option->get_positional();
    const std::string name = isPositional ? option->get_name(true) : option->get_name();
    details.arguments.push_back({ .name = name,
        .description = option->get_description(),
        .value = isPositional ? "" : "TEXT",
        .kind = kindNamed(name),
        .takesSeveral = option->get_expected_max() > 1 });
    if (name == applicationName)
        isOfApplication();
}

void Argument::isOfApplication() const
{
    details().kind = ArgumentKind::Application;
    verbDetails_.applications.push_back(target_);
}

const Argument& Argument::required() const
{
    option_->required();
    details().isRequired = true;
    return *this;
}

const Argument& Argument::ofKind(ArgumentKind kind) const
{
    details().kind = kind;
    return *this;
}

const Argument& Argument::example(const std::string& text) const
{
    details().example = text;
    return *this;
}

const Argument& Argument::oneOf(std::vector<std::string> words) const
{
    details().words = words;
    details().kind = ArgumentKind::Other;
    option_->check(CLI::IsMember(std::move(words)));
    return *this;
}

const Argument& Argument::between(double least, double most) const
{
    const auto bounds = [](double bound) {
        std::string text = std::to_string(bound);
        text.erase(text.find_last_not_of('0') + 1);
        return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
    };
    option_->check([least, most, range = bounds(least) + " to " + bounds(most)](const std::string& given) {
        double value = 0;
        const bool isWithin = CLI::detail::lexical_cast(given, value) && value >= least && value <= most;
        return isWithin ? std::string() : given + " isn't a number from " + range;
    });
    return *this;
}

const Argument& Argument::shownAs(const std::string& kind) const
{
    option_->type_name(kind);
    details().value = kind;
    if (details().kind == ArgumentKind::Other)
        details().kind = kindNamed(kind);
    if (kind == applicationName)
        isOfApplication();
    return *this;
}

const Argument& Argument::excludes(const std::string& other) const
{
    option_->excludes(verb_.get_option(other));
    return *this;
}

Argument Arguments::add(const std::string& name, Word& value, const std::string& description)
{
    return Argument(verb_,
        verb_.add_option_function<std::string>(
            name, [&value](const std::string& given) { value = Word(given); }, description),
        details_, { .word = &value });
}

Argument Arguments::add(const std::string& name, std::optional<Word>& value, const std::string& description)
{
    return Argument(verb_,
        verb_.add_option_function<std::string>(
            name, [&value](const std::string& given) { value = Word(given); }, description),
        details_, { .ifGiven = &value });
}

Argument Arguments::add(const std::string& name, std::vector<Word>& value, const std::string& description)
{
    return Argument(verb_,
        verb_.add_option_function<std::vector<std::string>>(
            name,
            [&value](const std::vector<std::string>& given) {
                for (const std::string& word : given)
                    value.emplace_back(word);
            },
            description),
        details_, { .several = &value });
}

Argument Arguments::add(const std::string& name, std::string& value, const std::string& description)
{
    return Argument(verb_, verb_.add_option(name, value, description), details_);
}

Argument Arguments::add(const std::string& name, std::vector<std::string>& value, const std::string& description)
{
    return Argument(verb_, verb_.add_option(name, value, description), details_);
}

Argument Arguments::add(const std::string& name, double& value, const std::string& description)
{
    return Argument(verb_, verb_.add_option(name, value, description), details_);
}

Argument Arguments::add(const std::string& name, std::optional<double>& value, const std::string& description)
{
    return Argument(verb_, verb_.add_option(name, value, description), details_);
}

Argument Arguments::add(const std::string& name, std::optional<long>& value, const std::string& description)
{
    CLI::Option* const option = verb_.add_option(name, value, description);
    // What reads the number takes the nearest for one that it can't hold.
    option->check([](const std::string& given) {
        long number = 0;
        const char* const end = given.data() + given.size();
        const auto [stop, error] = std::from_chars(given.data(), end, number);
        return error == std::errc() && stop == end ? std::string() : given + " isn't a whole number of 64 bits";
    });
    return Argument(verb_, option, details_);
}

Argument Arguments::flag(const std::string& name, bool& value, const std::string& description)
{
    Argument argument(verb_, verb_.add_flag(name, value, description), details_);
    details_.arguments.back().isFlag = true;
    return argument;
}

void Arguments::addApplicationsAndValue(
    std::vector<Word>& applications, Word& value, const std::string& description, const std::string& example)
{
    const auto split = [&](std::vector<std::string> given) {
        if (given.size() > 2 && given.back() == "%") {
            given.pop_back();
            given.back() += "%";
        }
        if (given.size() < 2)
            throw CLI::RequiredError("VALUE");
        value = Word(given.back());
        given.pop_back();
        applications.assign(given.begin(), given.end());
    };
    const Argument ids(verb_,
        verb_.add_option_function<std::vector<std::string>>("ID", split, "applications; then VALUE: " + description),
        details_, { .several = &applications });
    ids.required();
    details_.arguments.push_back(
        { .name = "VALUE", .description = description, .example = example, .isRequired = true });
}

void Arguments::addStrict(bool& isStrict)
{
    flag("--strict", isStrict, "refuse an application that this phone doesn't have");
    details_.isStrict = &isStrict;
}

void Arguments::addVersion(platform::SystemVersion& version)
{
    const std::string range = std::to_string(phone::oldestVersion) + " to " + std::to_string(phone::newestVersion);
    const auto read = [&version, range](const std::string& given) {
        const auto parsed = platform::parseSystemVersion(given);
        if (!parsed || parsed->major < phone::oldestVersion || parsed->major > phone::newestVersion)
            throw CLI::ValidationError("--ios", "a version from " + range + ", such as 16.0");
        version = *parsed;
    };
    Argument(verb_,
        verb_.add_option_function<std::string>("--ios", read, "version of the platform, " + range + " (default 16.0)"),
        details_)
        .shownAs("VERSION");
}

} // namespace cli
