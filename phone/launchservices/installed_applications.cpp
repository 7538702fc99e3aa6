#include "phone/launchservices/installed_applications.h"

#include "phone/device/removed_applications.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <iterator>
#include <set>

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

constexpr std::string_view bundleContainers = "/var/containers/Bundle/Application";
constexpr std::string_view dataContainers = "/var/mobile/Containers/Data/Application";

bool isBundle(std::string_view name)
{
    return name.ends_with(".app");
}

void readFolder(const std::string& folder, bool isSystem, std::vector<InstalledApplication>& applications)
{
    for (const std::string& entry : directoryEntries(folder))
        if (isBundle(entry))
            if (auto application = readApplication(pathByAppending(folder, entry), isSystem))
                applications.push_back(std::move(*application));
}

/// The system's, then the owner's in the order of their containers; several may have one identifier.
std::vector<InstalledApplication> everyBundle()
{
    const std::vector<std::string> gone = foldersOfRemovedApplications();
    const auto isGone = [&gone](const std::string& folder) { return std::ranges::find(gone, folder) != gone.end(); };
    std::vector<InstalledApplication> applications;
    readFolder("/Applications", true, applications);
    for (const std::string& name : directoryEntries(bundleContainers))
        if (const std::string container = pathByAppending(bundleContainers, name); !isGone(container))
            readFolder(container, false, applications);
    std::erase_if(applications, [&](const InstalledApplication& one) { return isGone(one.bundlePath); });
    return applications;
}

std::vector<std::string> dataContainersOf(std::string_view bundleIdentifier)
{
    const std::vector<std::string> gone = foldersOfRemovedApplications();
    std::vector<std::string> containers;
    for (const std::string& name : directoryEntries(dataContainers)) {
        std::string container = pathByAppending(dataContainers, name);
        const id metadata = dictionaryWithContentsOfFile(
            pathByAppending(container, ".com.apple.mobile_container_manager.metadata.plist"));
        if (const auto owner = asString(pairsOf(metadata)["MCMMetadataIdentifier"]);
            owner && *owner == bundleIdentifier && std::ranges::find(gone, container) == gone.end())
            containers.push_back(std::move(container));
    }
    return containers;
}

/// A container goes with its bundle, unless it holds another's too.
std::string folderToRemove(const InstalledApplication& application)
{
    const std::string container = pathByDeletingLastComponent(application.bundlePath);
    return std::ranges::count_if(directoryEntries(container), isBundle) == 1 ? container : application.bundlePath;
}

} // namespace

std::vector<InstalledApplication> installedApplications()
{
    std::vector<InstalledApplication> applications = everyBundle();
    std::set<std::string> identifiers;
    std::erase_if(applications,
        [&](const InstalledApplication& one) { return !identifiers.insert(one.bundleIdentifier).second; });
    std::ranges::sort(applications, {}, [](const InstalledApplication& application) {
        return std::pair(application.displayName, application.bundleIdentifier);
    });
    return applications;
}

std::optional<std::string> dataContainerOf(std::string_view bundleIdentifier)
{
    const std::vector<std::string> containers = dataContainersOf(bundleIdentifier);
    return containers.empty() ? std::nullopt : std::optional(containers.front());
}

std::string removeInstalledApplication(const std::string& bundleIdentifier)
{
    std::vector<std::string> folders;
    for (const InstalledApplication& application : everyBundle()) {
        if (application.bundleIdentifier != bundleIdentifier)
            continue;
        if (application.isSystem)
            return bundleIdentifier + " is the system's own";
        folders.push_back(folderToRemove(application));
    }
    if (folders.empty())
        return {};
    std::ranges::move(dataContainersOf(bundleIdentifier), std::back_inserter(folders));
    return removeForGood(bundleIdentifier, folders);
}

} // namespace phone
