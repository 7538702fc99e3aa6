#include "cli/app/record_text.h"
#include "cli/command/arguments.h"
#include "cli/command/verb_rows.h"
#include "phone/control/application_record.h"
#include "phone/launchservices/installed_applications.h"
#include "platform/dispatch/activity.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/file_reader.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "record/app_ledger.h"
#include "record/executable.h"

#include <cstring>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

/// Bundles and executables on this computer, looked at with the library's own code. No phone has a part in it.

namespace cli {

using namespace platform;
using Json = nlohmann::json;

namespace {

ExitStatus inspectFolder(const std::string& folder)
{
    std::error_code error;
    const std::string path = std::filesystem::canonical(folder, error);
    if (error || !std::filesystem::is_directory(path, error))
        return refuse(folder + ": " + (error ? error.message() : "it isn't a folder"));
    // The whole computer stands for the device.
    if (!setDeviceRoot("/"))
        return refuse("can't open /");
    const phone::InstalledApplication application = phone::applicationInBundle(path);
    if (!application.information)
        warn(pathByAppending(folder, "Info.plist") + " is missing, or no property list of the right kind");
    const ActivityScope scope(newActivity());
    const auto record = appledger::ALAppLedger::forProxy(nil, phone::proxyOf(application));
    constexpr std::chrono::seconds patience { 10 };
    runUntil([] { return !isWorkInHand(currentActivity()); }, patience);
    Json fields = phone::recordJson(record);
    // Nobody shows it on this computer: its name is what its folder says.
    fields["name"] = application.displayName.empty() ? Json(nullptr) : Json(application.displayName);
    say(describeRecord(fields), { { "ok", true }, { "record", fields } });
    return ExitStatus::Done;
}

Action inspect(Arguments& arguments)
{
    const auto folder = std::make_shared<std::string>();
    arguments.add("FOLDER", *folder, "an application's bundle on this computer").required();
    return [folder](const phone::PhoneDirectory&) { return inspectFolder(*folder); };
}

std::string_view nameOf(appledger::ExecutableKind kind)
{
    switch (kind) {
    case appledger::ExecutableKind::Encrypted:
        return "encrypted";
    case appledger::ExecutableKind::Decrypted:
        return "decrypted";
    case appledger::ExecutableKind::NotMachO:
        break;
    }
    return "not mach-o";
}

ExitStatus tellEncryption(const std::vector<std::string>& paths)
{
    std::string text;
    Json files = Json::array();
    ExitStatus status = ExitStatus::Done;
    for (const std::string& path : paths) {
        const FileReader file = FileReader::ofHost(path);
        if (file.error() != 0) {
            warn(path + ": " + std::strerror(file.error()));
            files.push_back({ { "file", path }, { "error", std::strerror(file.error()) } });
            status = ExitStatus::Refused;
            continue;
        }
        const auto kind = appledger::executableKind(
            [&file](std::uint64_t offset, void* bytes, std::size_t size) { return file.read(offset, bytes, size); });
        text.append(onOneLine(path)).append(": ").append(nameOf(kind)) += '\n';
        files.push_back({ { "file", path }, { "encryption", nameOf(kind) } });
    }
    say(text, { { "ok", status == ExitStatus::Done }, { "files", files } });
    return status;
}

Action encryption(Arguments& arguments)
{
    const auto files = std::make_shared<std::vector<std::string>>();
    arguments.add("FILE", *files, "executables on this computer").required();
    return [files](const phone::PhoneDirectory&) { return tellEncryption(*files); };
}

constexpr VerbRow rows[] {
    { "app inspect", "what is known of an application whose folder lies on this computer", inspect },
    { "app encryption", "whether executables on this computer are encrypted", encryption },
};

} // namespace

extern const VerbRows bundleVerbs { rows };

} // namespace cli
