#include "phone/launchservices/installed_applications.h"

#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cstring>

namespace phone {

using namespace platform;

namespace {

std::string textOr(const DictionaryValue& information, std::string_view key, std::string_view otherwise)
{
    const auto text = asString(information[key]);
    return text && !text->empty() ? text->text() : std::string(otherwise);
}

std::optional<InstalledApplication> readApplication(const std::string& bundlePath, bool isSystem)
{
    const auto information = asDictionary(dictionaryWithContentsOfFile(pathByAppending(bundlePath, "Info.plist")));
    if (!information)
        return std::nullopt;
    InstalledApplication application;
    application.bundleIdentifier = textOr(*information, "CFBundleIdentifier", "");
    if (application.bundleIdentifier.empty())
        return std::nullopt;
    const std::string name = textOr(*information, "CFBundleName", application.bundleIdentifier);
    application.displayName = textOr(*information, "CFBundleDisplayName", name);
    application.version = textOr(*information, "CFBundleShortVersionString", "1");
    application.bundlePath = bundlePath;
    application.executablePath = pathByAppending(bundlePath, textOr(*information, "CFBundleExecutable", name));
    application.isSystem = isSystem;
    for (const id& item : itemsOf((*information)["SBAppTags"]))
        if (const auto tag = asString(item))
            application.tags.push_back(tag->text());
    return application;
}

void readFolder(const std::string& folder, bool isSystem, std::vector<InstalledApplication>& applications)
{
    for (const std::string& entry : directoryEntries(folder))
        if (entry.ends_with(".app"))
            if (auto application = readApplication(pathByAppending(folder, entry), isSystem))
                applications.push_back(std::move(*application));
}

} // namespace

std::vector<InstalledApplication> installedApplications()
{
    constexpr std::string_view containers = "/var/containers/Bundle/Application";
    std::vector<InstalledApplication> applications;
    readFolder("/Applications", true, applications);
    for (const std::string& container : directoryEntries(containers))
        readFolder(pathByAppending(containers, container), false, applications);
    std::ranges::sort(applications, {}, [](const InstalledApplication& application) {
        return std::pair(application.displayName, application.bundleIdentifier);
    });
    return applications;
}

std::optional<std::string> dataContainerOf(std::string_view bundleIdentifier)
{
    constexpr std::string_view containers = "/var/mobile/Containers/Data/Application";
    for (const std::string& name : directoryEntries(containers)) {
        std::string container = pathByAppending(containers, name);
        const id metadata = dictionaryWithContentsOfFile(
            pathByAppending(container, ".com.apple.mobile_container_manager.metadata.plist"));
        if (const auto owner = asString(pairsOf(metadata)["MCMMetadataIdentifier"]);
            owner && *owner == bundleIdentifier)
            return container;
    }
    return std::nullopt;
}

std::string removeInstalledApplication(const std::string& bundleIdentifier)
{
    for (const InstalledApplication& application : installedApplications()) {
        if (application.bundleIdentifier != bundleIdentifier || application.isSystem)
            continue;
        std::vector<std::string> folders { pathByDeletingLastComponent(application.bundlePath) };
        if (auto container = dataContainerOf(bundleIdentifier))
            folders.push_back(std::move(*container));
        for (const std::string& folder : folders)
            if (const int error = removeTree(folder))
                return "can't remove " + folder + ": " + std::strerror(error);
    }
    return {};
}

} // namespace phone
