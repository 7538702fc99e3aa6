#include "cli/app/record_text.h"
#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

/// What the library's record says of an application on the phone.
Action show(Arguments& arguments)
{
    const auto application = std::make_shared<Word>();
    arguments.add("ID", *application, "bundle identifier").required();
    return [application](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard", { { "verb", "record" }, { "application", application->text() } },
            [](const Json& answer) { return describeRecord(answer.at("record")); });
    };
}

constexpr VerbRow rows[] {
    { "app show", "what is known of an application", show, "record" },
};

} // namespace

extern const VerbRows recordVerbs { rows };

} // namespace cli
