#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using Json = nlohmann::json;

namespace {

std::string describeResults(const Json& answer)
{
    std::ostringstream text;
    for (const Json& result : answer["results"])
        text << (text.tellp() > 0 ? "\n" : "") << result.value("name", "") << "  (" << result.value("application", "")
             << ")";
    return text.tellp() > 0 ? text.str() : "Nothing was found.";
}

/// What Spotlight finds, and shows on its screen.
Action search(Arguments& arguments)
{
    const auto wanted = std::make_shared<Word>();
    arguments.add("TEXT", *wanted, "what the name holds; without it all applications are shown");
    return [wanted](const phone::PhoneDirectory& directory) {
        return tellAnswer(
            directory, "Spotlight", { { "verb", "search" }, { "text", wanted->text() } }, describeResults);
    };
}

constexpr VerbRow rows[] {
    { "phone search", "search for applications in Spotlight; its screen is seen with --process Spotlight", search,
        "search" },
};

} // namespace

extern const VerbRows searchVerbs { rows };

} // namespace cli
