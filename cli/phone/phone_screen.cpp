#include "cli/command/phone_client.h"
#include "cli/phone/phone_commands.h"

#include <filesystem>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

Json askSpringBoard(const phone::PhoneDirectory& directory, const Json& request)
{
    if (!connectToPhone(directory))
        return { { "ok", false }, { "error", "the phone at " + directory.root() + " isn't up" } };
    return askPhone("SpringBoard", request);
}

} // namespace

ExitStatus phoneScreenshot(const phone::PhoneDirectory& directory, const ScreenshotOptions& options)
{
    std::error_code error;
    const std::string path = std::filesystem::absolute(options.file, error).string();
    const Json report
        = askSpringBoard(directory, { { "verb", "screenshot" }, { "path", path }, { "scale", options.scale } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say("Wrote " + path + ", " + std::to_string(report.value("bytes", 0L)) + " bytes.", report);
    return ExitStatus::Done;
}

ExitStatus phoneDescribe(const phone::PhoneDirectory& directory)
{
    const Json report = askSpringBoard(directory, { { "verb", "describe" } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    std::string text = report.value("screen", "");
    while (text.ends_with('\n'))
        text.pop_back();
    say(text, report);
    return ExitStatus::Done;
}

ExitStatus phoneFolder(const phone::PhoneDirectory& directory, const std::string& change, const std::string& name)
{
    const Json report = askSpringBoard(directory, { { "verb", "folder" }, { "change", change }, { "name", name } });
    if (!report.value("ok", false))
        return refuse(report.value("error", "no answer"));
    say((change == "open" ? "Opened the folder " : "Closed the folder ") + name + ".", report);
    return ExitStatus::Done;
}

} // namespace cli
