#include "cli/command/application_names.h"
#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/phone/bundle_copy.h"
#include "phone/appstoredaemon/delivery.h"
#include "phone/device/sample_applications.h"
#include "phone/device/staging.h"
#include "phone/launchservices/installation.h"
#include "platform/foundation/files.h"

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

struct InstallOptions {
    std::string what; ///< a folder of this computer, or an application that the phone came with
};

bool isFolder(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

/// Puts it together on the device. "" or why that can't be, for people.
std::string stage(const std::string& what, const std::string& stagedContainer)
{
    if (isFolder(what)) {
        const std::string problem = copyBundle(what, stagedContainer);
        return problem.empty() ? "" : what + " can't be installed: " + problem;
    }
    if (what.find('/') != std::string::npos || what.ends_with(".app"))
        return "there is no folder " + what;
    std::vector<KnownApplication> samples;
    for (const phone::SampleApplication& sample : phone::sampleApplications())
        samples.push_back({ std::string(sample.bundleIdentifier), std::string(sample.name) });
    const MeantApplication meant = meantApplication(samples, what);
    if (!meant.isKnown)
        return meant.problem.empty() ? "there is no folder " + what
                + ", and no application that phones come with is called so; 'appledger phone install FOLDER' takes the "
                  "folder of an application, with an Info.plist in it"
                                     : meant.problem;
    return phone::stageSample(meant.identifier, {}, stagedContainer);
}

std::string describe(const Json& report)
{
    return report.value("name", "") + " (" + report.value("application", "") + ") "
        + (report.value("isUpdate", false) ? "is exchanged for this version; it has kept its data." : "is installed.");
}

/// Where the phone isn't up there is nobody to ask and nobody to tell.
ExitStatus installOnDevice(const std::string& stagedContainer)
{
    const phone::InstallationOutcome outcome = phone::installStagedContainer(stagedContainer);
    if (!outcome.problem.empty())
        return refuse(outcome.problem);
    const Json report { { "application", outcome.application.bundleIdentifier },
        { "name", outcome.application.displayName }, { "isUpdate", outcome.isUpdate } };
    say(describe(report) + " The phone isn't up.", report);
    return ExitStatus::Done;
}

ExitStatus install(const phone::PhoneDirectory& directory, const std::string& what)
{
    if (const std::string problem = directory.problem(); !problem.empty())
        return refuse(problem);
    if (!platform::setDeviceRoot(directory.root()))
        return refuse("can't open " + directory.root() + " as the phone's root");
    if (!platform::directoryExists("/var/mobile/Library/Preferences"))
        return refuse("there is no phone at " + directory.root() + "; 'appledger phone up' makes one");
    const phone::StagedContainer staged;
    if (!staged.problem().empty())
        return refuse(staged.problem());
    if (const std::string problem = stage(what, staged.path()); !problem.empty())
        return refuse(problem);
    const std::string bundle = phone::bundleIn(staged.path());
    if (const std::string problem = phone::problemOfBundle(bundle); !problem.empty())
        return refuse(what + " can't be installed: " + problem);
    if (!connectToPhone(directory))
        return directory.supervisorProcess() == 0 ? installOnDevice(staged.path()) : refuse(whyNotConnected(directory));
    return tellAnswer(directory, "SpringBoard", { { "verb", "install" }, { "path", bundle } }, describe);
}

Action installing(Arguments& arguments)
{
    const auto options = std::make_shared<InstallOptions>();
    arguments
        .add("FOLDER", options->what,
            "the folder of an application on this computer; or the identifier or the name of one that phones come with")
        .required()
        .ofKind(ArgumentKind::File);
    return [options](const phone::PhoneDirectory& directory) { return install(directory, options->what); };
}

constexpr VerbRow rows[] {
    { "phone install", "put an application on the phone, or another version of one that is there", installing,
        "install" },
};

} // namespace

extern const VerbRows installVerbs { rows };

} // namespace cli
