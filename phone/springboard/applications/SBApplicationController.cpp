#include "phone/launchservices/installed_applications.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

/// Has the application be what is installed now.
void describe(const id& application, const InstalledApplication& installed)
{
    send<"setBundlePath:", void>(application, string(installed.bundlePath));
    send<"setDisplayName:", void>(application, string(installed.displayName));
    const id info = send<"new">(id(classNamed<"SBApplicationInfo">()));
    send<"setBundleIdentifier:", void>(info, string(installed.bundleIdentifier));
    send<"setPlaceholder:", void>(info, installed.isPlaceholder);
    send<"setSystemApplication:", void>(info, installed.isSystem);
    std::vector<id> tags;
    for (const std::string& tag : installed.tags)
        tags.push_back(string(tag));
    send<"setTags:", void>(info, array(std::move(tags)));
    send<"setInfo:", void>(application, info);
}

id makeApplication(const InstalledApplication& installed)
{
    id application = send<"new">(id(classNamed<"SBApplication">()));
    send<"setBundleIdentifier:", void>(application, string(installed.bundleIdentifier));
    describe(application, installed);
    return application;
}

/// All installed applications: those of SpringBoard's start, and what has come and gone since.
class SBApplicationController : public NSObject {
public:
    SBApplicationController()
    {
        std::vector<std::pair<id, id>> pairs;
        for (const InstalledApplication& installed : installedApplications()) {
            id application = makeApplication(installed);
            id identifier = send<"bundleIdentifier">(application);
            pairs.emplace_back(std::move(identifier), std::move(application));
        }
        applications_ = dictionary(std::move(pairs));
    }

    id applicationWithBundleIdentifier(const id& identifier) const { return pairsOf(applications_)[identifier]; }

    void removeApplication(const id& identifier)
    {
        if (const auto text = asString(identifier))
            applications_ = dictionaryBySetting(applications_, *text, nil);
    }

    /// One that is new, or another version of one that is known.
    void loadApplication(const id& identifier)
    {
        const auto text = asString(identifier);
        const auto installed = installedApplications();
        const auto found
            = std::ranges::find(installed, text ? text->view() : "", &InstalledApplication::bundleIdentifier);
        if (found == installed.end())
            return;
        if (const id known = applicationWithBundleIdentifier(identifier))
            describe(known, *found);
        else
            applications_ = dictionaryBySetting(applications_, *text, makeApplication(*found));
    }

    id allApplications() const
    {
        std::vector<id> applications;
        for (const auto& [identifier, application] : pairsOf(applications_))
            applications.push_back(application);
        return array(std::move(applications));
    }

private:
    id applications_;
};

id sharedInstance(const id& self, SEL)
{
    static NSObject* const controller = send<"new">(self).leak();
    return controller;
}

constexpr MethodDefinition methods[] {
    method<"_loadApplicationWithBundleIdentifier:", &SBApplicationController::loadApplication>(),
    method<"allApplications", &SBApplicationController::allApplications>(),
    method<"applicationWithBundleIdentifier:", &SBApplicationController::applicationWithBundleIdentifier>(),
    method<"removeApplicationWithBundleIdentifier:", &SBApplicationController::removeApplication>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBApplicationController_class {
    .name = "SBApplicationController", .allocate = allocate<SBApplicationController>, .methods = methods
};

} // namespace phone
