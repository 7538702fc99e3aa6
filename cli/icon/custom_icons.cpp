#include "cli/command/arguments.h"
#include "cli/command/output.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "icons/icon_cache.h"
#include "phone/control/icon_surfaces.h"
#include "phone/device/web_clips.h"
#include "phone/launchservices/installed_applications.h"
#include "phone/process/process_definition.h"
#include "platform/foundation/files.h"

#include <filesystem>
#include <iomanip>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using Json = nlohmann::json;
using namespace appledger;

namespace {

std::string absolutePath(const std::string& path)
{
    std::error_code error;
    const std::string absolute = std::filesystem::absolute(path, error).string();
    return error ? path : absolute;
}

Action setIcon(Arguments& arguments)
{
    struct Options {
        Word application;
        std::string picture;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ID", options->application, "bundle identifier, or a web clip's").required();
    arguments.add("PICTURE", options->picture, "a PNG or JPEG file; its centre square is shown").required();
    return [options](const phone::PhoneDirectory& directory) {
        return tellLongWork(directory, "SpringBoard",
            { { "verb", "icon-set" }, { "application", options->application.text() },
                { "path", absolutePath(options->picture) } },
            "Saving the picture", [options](const Json& answer) {
                return options->application.text() + " has the picture now, in " + answer.value("path", "") + ", "
                    + std::to_string(answer.value("bytes", 0L)) + " bytes.";
            });
    };
}

Action resetIcon(Arguments& arguments)
{
    const auto application = std::make_shared<Word>();
    arguments.add("ID", *application, "bundle identifier, or a web clip's").required();
    return [application](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard",
            { { "verb", "icon-reset" }, { "application", application->text() } }, [application](const Json& answer) {
                return application->text()
                    + (answer.value("hadIcon", false) ? " has its own picture again."
                                                      : " had its own picture, and has it.");
            });
    };
}

ExitStatus refreshIcons(const phone::PhoneDirectory& directory)
{
    return tellAnswer(directory, "SpringBoard", { { "verb", "icon-refresh" } },
        [](const Json&) { return "Every process has forgotten its pictures, and the Home Screen was laid out anew."; });
}

/// What the head of a PNG file says of its size; 0 x 0 for what isn't one.
std::pair<unsigned, unsigned> sizeOfPng(std::string_view bytes)
{
    constexpr std::size_t widthAt = 16;
    constexpr std::size_t heightAt = 20;
    if (bytes.size() < heightAt + 4 || !bytes.starts_with("\x89PNG\r\n\x1A\n"))
        return {};
    const auto number = [&bytes](std::size_t at) {
        unsigned value = 0;
        for (const char byte : bytes.substr(at, 4))
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    };
    return { number(widthAt), number(heightAt) };
}

/// By leaf identifier.
std::map<std::string, std::string> namesOnPhone()
{
    std::map<std::string, std::string> names;
    for (phone::InstalledApplication& application : phone::installedApplications())
        names.emplace(std::move(application.bundleIdentifier), std::move(application.displayName));
    for (phone::WebClip& clip : phone::webClips())
        names.emplace(std::move(clip.identifier), std::move(clip.title));
    return names;
}

/// The icon files of a phone, up or down.
ExitStatus listIcons(const phone::PhoneDirectory& directory)
{
    if (!platform::setDeviceRoot(directory.root()))
        return refuse("can't open " + directory.root() + " as the phone's root");
    const auto names = namesOnPhone();
    std::ostringstream text;
    Json list = Json::array();
    for (const std::string& file : platform::directoryEntries(customIconDirectory)) {
        constexpr std::string_view ending = ".png";
        if (!file.ends_with(ending) || file.starts_with('.'))
            continue;
        const std::string identifier = file.substr(0, file.size() - ending.size());
        const auto content = platform::readFile(platform::pathByAppending(customIconDirectory, file));
        const auto [width, height] = sizeOfPng(content.value_or(""));
        const auto name = names.find(identifier);
        const std::size_t bytes = content ? content->size() : 0;
        list.push_back({ { "application", identifier }, { "name", name == names.end() ? Json() : Json(name->second) },
            { "width", width }, { "height", height }, { "bytes", bytes } });
        text << (list.size() > 1 ? "\n" : "") << std::left << std::setw(34) << identifier << std::setw(20)
             << (name == names.end() ? "(not installed)" : name->second) << width << " x " << height << ", " << bytes
             << " bytes";
    }
    say(list.empty() ? "No application has a picture of your choice." : text.str(), { { "icons", list } });
    return ExitStatus::Done;
}

Action renderIcon(Arguments& arguments)
{
    struct Options {
        Word application;
        Word surface { "home" };
        std::optional<Word> process;
        std::string file;
        double size = 60;
        std::optional<double> scale;
    };
    const auto options = std::make_shared<Options>();
    std::vector<std::string> names;
    for (const phone::IconSurface& surface : phone::iconSurfaces())
        names.emplace_back(surface.name);
    arguments.add("ID", options->application, "bundle identifier, or a web clip's").required();
    arguments.add("--surface", options->surface, "where the icon is shown (default home)").oneOf(names);
    arguments.add("--size", options->size, "width in points (default 60)").between(1, 1024);
    arguments.add("--scale", options->scale, "pixels a point (default the screen's)").between(0.5, 10);
    arguments.add("--process", options->process, "in which process, where several have the surface")
        .oneOf({ "SpringBoard", "Spotlight", "AppStore" });
    arguments.add("-o,--output", options->file, "the PNG file").required();
    return [options](const phone::PhoneDirectory& directory) {
        std::string process;
        for (const phone::IconSurface& surface : phone::iconSurfaces())
            if (surface.name == options->surface.text())
                process = surface.process;
        if (options->process)
            process = options->process->text();
        Json request { { "verb", "icon-render" }, { "application", options->application.text() },
            { "surface", options->surface.text() }, { "size", options->size },
            { "path", absolutePath(options->file) } };
        if (options->scale)
            request["scale"] = *options->scale;
        return tellAnswer(directory, process, request, [](const Json& answer) {
            std::ostringstream text;
            text << "Wrote " << answer.value("path", "") << ", " << answer.value("width", 0.0) << " x "
                 << answer.value("height", 0.0) << " points at scale " << answer.value("scale", 1.0) << ".";
            return text.str();
        });
    };
}

/// What each process keeps of an application's icon.
Action tellState(Arguments& arguments)
{
    const auto application = std::make_shared<Word>();
    arguments.add("ID", *application, "bundle identifier, or a web clip's").required();
    return [application](const phone::PhoneDirectory& directory) {
        std::ostringstream text;
        Json processes = Json::object();
        for (const phone::ProcessDefinition& process : phone::processDefinitions()) {
            const Json answer = askPhone(
                directory, process.name, { { "verb", "icon-state" }, { "application", application->text() } });
            if (answer["ok"] != true)
                return refuse(std::string(process.name) + ": " + answer.value("error", "the phone didn't answer"));
            const Json hasFile = answer["hasFile"];
            processes[std::string(process.name)]
                = { { "token", answer["token"] }, { "hasFile", hasFile }, { "images", answer["images"] } };
            text << (processes.size() > 1 ? "\n" : "") << std::left << std::setw(14) << process.name
                 << "changes heard of " << answer.value("token", "0") << ", file "
                 << (hasFile.is_null()        ? "not looked for"
                            : hasFile == true ? "there"
                                              : "not there")
                 << ", images kept " << answer.value("images", 0L);
        }
        say(text.str(), { { "processes", processes } });
        return ExitStatus::Done;
    };
}

constexpr VerbRow rows[] {
    { "icon set", "give an application or a web clip a picture of your choice", setIcon, "icon-set" },
    { "icon reset", "give it its own picture back", resetIcon, "icon-reset" },
    { "icon list", "which have a picture of your choice", plain<listIcons> },
    { "icon render", "write an icon as one of the system's surfaces shows it into a PNG file", renderIcon,
        "icon-render" },
    { "icon state", "what each process keeps of an application's icon", tellState, "icon-state" },
    { "icon refresh", "have every process forget its pictures, and lay every icon out anew", plain<refreshIcons>,
        "icon-refresh" },
};

} // namespace

extern const VerbRows customIconVerbs { rows };

} // namespace cli
