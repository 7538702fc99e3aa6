#include "phone/device/staging.h"
#include "phone/frontboard/open_request.h"
#include "phone/launchservices/installation.h"
#include "phone/system/journal.h"
#include "platform/foundation/error.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

id defaultWorkspace(const id& self, SEL)
{
    static NSObject* const workspace = send<"new">(self).leak();
    return workspace;
}

bool openApplicationWithBundleID(const id&, SEL, const id& identifier)
{
    journal(JournalEvent::Ran, "LSApplicationWorkspace openApplicationWithBundleID:");
    const auto text = asString(identifier);
    return text && openApplication({ text->text() });
}

id allInstalledApplications(const id&, SEL)
{
    std::vector<id> proxies;
    for (const InstalledApplication& installed : installedApplications())
        proxies.push_back(proxyOf(installed));
    return array(std::move(proxies));
}

bool failed(const std::string& failure, id* error)
{
    journal(JournalEvent::Note, failure);
    if (error)
        *error = platform::error(
            "MIInstallerErrorDomain", 1, dictionary({ { "NSLocalizedDescription", string(failure) } }));
    return false;
}

/// The bundle lies in a staged container. The Home Screen follows on the main queue.
bool installApplication(const id&, SEL, const id& url, const id&, id* error)
{
    const auto path = asString(askObject<"path">(url));
    const std::string container = path ? pathByDeletingLastComponent(path->view()) : "";
    if (pathByDeletingLastComponent(container) != stagingPlace)
        return failed("the application to install isn't staged", error);
    const InstallationOutcome outcome = installStagedContainer(container);
    if (!outcome.problem.empty())
        return failed(outcome.problem, error);
    tellOfInstallation(InstallationChange::Installed, outcome.application.bundleIdentifier);
    return true;
}

/// The Home Screen follows on the main queue.
bool uninstallApplication(const id&, SEL, const id& identifier, const id&, id* error)
{
    const auto text = asString(identifier);
    const auto installed = installedApplications();
    std::string failure = "no such application is installed";
    if (text && std::ranges::find(installed, text->view(), &InstalledApplication::bundleIdentifier) != installed.end())
        failure = removeInstalledApplication(text->text());
    if (failure.empty()) {
        tellOfInstallation(InstallationChange::Removed, text->text());
        return true;
    }
    return failed(failure, error);
}

bool uninstallApplicationWithOptions(const id& self, SEL cmd, const id& identifier, const id& options)
{
    return uninstallApplication(self, cmd, identifier, options, nullptr);
}

constexpr MethodDefinition methods[] {
    method<"allInstalledApplications", &allInstalledApplications>(),
    classMethod<"defaultWorkspace", &defaultWorkspace>(),
    method<"installApplication:withOptions:error:", &installApplication>(),
    method<"openApplicationWithBundleID:", &openApplicationWithBundleID>(),
    method<"uninstallApplication:withOptions:", &uninstallApplicationWithOptions>(),
    method<"uninstallApplication:withOptions:error:", &uninstallApplication>().since(13),
};

} // namespace

extern const ClassDefinition LSApplicationWorkspace_class { .name = "LSApplicationWorkspace", .methods = methods };

} // namespace phone
