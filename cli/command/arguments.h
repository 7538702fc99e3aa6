#pragma once

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
    explicit Argument(CLI::App& verb, CLI::Option* option) noexcept
        : verb_(verb)
        , option_(option)
    {
    }

    const Argument& required() const;
    const Argument& oneOf(std::vector<std::string> words) const;
    /// A number, and none that isn't one.
    const Argument& between(double least, double most) const;
    /// What stands for its value in the usage: "SECONDS".
    const Argument& shownAs(const std::string& kind) const;
    /// Not together with that one, which was added before.
    const Argument& excludes(const std::string& other) const;

private:
    CLI::App& verb_;
    CLI::Option* const option_;
};

/// The arguments of one verb. Names with dashes are options, names without stand in their order. The values are set
/// when the line has been read, and must live until then.
class Arguments {
public:
    explicit Arguments(CLI::App& verb) noexcept
        : verb_(verb)
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

    /// --ios, a version that a phone can have.
    void addVersion(platform::SystemVersion& version);

private:
    CLI::App& verb_;
};

} // namespace cli
