#include "cli/command/verb_details.h"

#include <utility>

namespace cli {

namespace {

constexpr std::pair<std::string_view, std::string_view> examples[] {
    { "DESTINATION", "com.example.mail" },
    { "FILE", "policies.json" },
    { "FOLDER", "Example.app" },
    { "ID", "com.example.notes" },
    { "KEY", "ALBlockedLaunchApps" },
    { "NAME", "evening" },
    { "PROCESS", "Spotlight" },
    { "SOURCE", "com.example.notes" },
    { "TEXT", "hello" },
    { "VALUE", "com.example.notes" },
};

std::string exampleOf(const ArgumentDetails& argument)
{
    if (!argument.example.empty())
        return argument.example;
    if (!argument.words.empty())
        return argument.words.front();
    for (const auto& [name, text] : examples)
        if (argument.name == name || argument.value == name)
            return std::string(text);
    return argument.isOption() ? "1" : argument.name;
}

} // namespace

std::string VerbDetails::example() const
{
    std::string line = "appledger " + words;
    for (const ArgumentDetails& argument : arguments) {
        if (!argument.isRequired && argument.example.empty())
            continue;
        line += argument.isOption() ? " " + argument.name : "";
        if (!argument.isFlag)
            line += " " + exampleOf(argument);
    }
    return line;
}

} // namespace cli
