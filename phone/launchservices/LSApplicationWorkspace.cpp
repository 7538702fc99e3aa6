#include "phone/frontboard/open_request.h"
#include "phone/launchservices/installed_applications.h"
#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

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

constexpr MethodDefinition methods[] {
    method<"allInstalledApplications", &allInstalledApplications>(),
    classMethod<"defaultWorkspace", &defaultWorkspace>(),
    method<"openApplicationWithBundleID:", &openApplicationWithBundleID>(),
};

} // namespace

extern const ClassDefinition LSApplicationWorkspace_class { .name = "LSApplicationWorkspace", .methods = methods };

} // namespace phone
