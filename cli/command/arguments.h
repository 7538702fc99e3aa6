#pragma once

#include "cli/command/verb_details.h"
#include "cli/command/word.h"
#include "platform/darwin/system.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// What a verb takes. This is the one door to the library that reads the command line.

namespace cli {

/// One argument, as it is said how it may be given. What is given otherwise ends the command with its usage.
class Argument {
public:
    explicit Argument(CLI::App& verb, CLI::Option* option, VerbDetails& details, ApplicationArgument target = {});

    const Argument& required() const;
    const Argument& oneOf(std::vector<std::string> words) const;
    /// A number, and none that isn't one.
    const Argument& between(double least, double most) const;
    /// What stands for its value in the usage: "SECONDS". An "ID" is an application's, also where an argument without
    /// dashes is called so: it may be given by name.
    const Argument& shownAs(const std::string& kind) const;
    const Argument& ofKind(ArgumentKind kind) const;
    /// What the verb's example has here. One that isn't required stands in the example only when it has one.
    const Argument& example(const std::string& text) const;
    /// Not together with that one, which was added before.
    const Argument& excludes(const std::string& other) const;

private:
    ArgumentDetails& details() const { return verbDetails_.arguments[index_]; }
    void isOfApplication() const;

    CLI::App& verb_;
    CLI::Option* const option_;
    VerbDetails& verbDetails_;
    const std::size_t index_; ///< in the verb's details
    const ApplicationArgument target_;
};

/// The arguments of one verb. Names with dashes are options, names without stand in their order. The values are set
/// when the line has been read, and must live until then.
class Arguments {
public:
    explicit Arguments(CLI::App& verb, VerbDetails& details) noexcept
        : verb_(verb)
        , details_(details)
    {
    }

    Argument add(const std::string& name, Word& value, const std::string& description = {});
    Argument add(const std::string& name, std::optional<Word>& value, const std::string& description = {});
    Argument add(const std::string& name, std::vector<Word>& value, const std::string& description = {});
    /// As it is, byte for byte: the path of a file.
    Argument add(const std::string& name, std::string& value, const std::string& description = {});
    Argument add(const std::string& name, std::vector<std::string>& value, const std::string& description = {});
    Argument add(const std::string& name, double& value, const std::string& description = {});
    Argument add(const std::string& name, std::optional<double>& value, const std::string& description = {});
    Argument add(const std::string& name, std::optional<long>& value, const std::string& description = {});
    Argument flag(const std::string& name, bool& value, const std::string& description = {});

    /// Applications ("ID"), and behind them one word more ("VALUE", with `description`), or two where the last is "%".
    void addApplicationsAndValue(
        std::vector<Word>& applications, Word& value, const std::string& description, const std::string& example);

    /// --strict: refuses applications that the phone doesn't have.
    void addStrict(bool& isStrict);

    /// --ios, a version that a phone can have.
    void addVersion(platform::SystemVersion& version);

private:
    CLI::App& verb_;
    VerbDetails& details_;
};

} // namespace cli
