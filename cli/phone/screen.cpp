#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

const std::vector<std::string> processesWithScreen { "SpringBoard", "Spotlight" };

/// Writes what is on the screen as a PNG file. Refused when it can't be written.
Action screenshot(Arguments& arguments)
{
    struct Options {
        std::string file;
        double scale = 3;
        Word process { "SpringBoard" };
    };
    const auto options = std::make_shared<Options>();
    arguments.add("--process", options->process, "whose screen (default SpringBoard)").oneOf(processesWithScreen);
    arguments.add("FILE", options->file, "the PNG file").required();
    arguments.add("--scale", options->scale, "pixels a point (default 3)").between(0.1, 10);
    return [options](const phone::PhoneDirectory& directory) {
        std::error_code error;
        const std::string path = std::filesystem::absolute(options->file, error).string();
        return tellAnswer(directory, options->process.text(),
            { { "verb", "screenshot" }, { "path", path }, { "scale", options->scale } }, [&path](const Json& report) {
                return "Wrote " + path + ", " + std::to_string(report.value("bytes", 0L)) + " bytes.";
            });
    };
}

Action describeScreen(Arguments& arguments)
{
    const auto process = std::make_shared<Word>("SpringBoard");
    arguments.add("--process", *process, "whose screen (default SpringBoard)").oneOf(processesWithScreen);
    return [process](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, process->text(), { { "verb", "describe" } }, [](const Json& report) {
            std::string text = report.value("screen", "");
            while (text.ends_with('\n'))
                text.pop_back();
            return text;
        });
    };
}

Action changeFolder(Arguments& arguments)
{
    struct Options {
        Word change;
        Word name;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("CHANGE", options->change, "open or close").required().oneOf({ "open", "close" });
    arguments.add("NAME", options->name).required();
    return [options](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard",
            { { "verb", "folder" }, { "change", options->change.text() }, { "name", options->name.text() } },
            [&options](const Json&) {
                return (options->change.text() == "open" ? "Opened the folder " : "Closed the folder ")
                    + options->name.text() + ".";
            });
    };
}

constexpr VerbRow rows[] {
    { "phone screenshot", "write what is on the screen into a PNG file", screenshot, "screenshot" },
    { "phone describe", "what is on the screen as text, one view a line", describeScreen, "describe" },
    { "phone folder", "open or close a folder of the Home Screen", changeFolder, "folder" },
};

} // namespace

extern const VerbRows screenVerbs { rows };

} // namespace cli
