#include "phone/launchservices/installed_applications.h"

#include "phone/device/containers.h"
#include "phone/device/removed_applications.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <set>
#include <tuple>

namespace phone {

using namespace platform;

namespace {

std::string textOr(const DictionaryValue& information, std::string_view key, std::string_view otherwise)
{
    const auto text = asString(information[key]);
    return text && !text->empty() ? text->text() : std::string(otherwise);
}

constexpr std::string_view systemApplications = "/Applications";

bool isBundle(std::string_view name)
{
    return name.ends_with(".app");
}

/// `isPlaceholder`: the folder that the bundle stands in says that nothing but its data is left.
InstalledApplication readBundle(const std::string& bundlePath, bool isPlaceholder)
{
    InstalledApplication application;
    application.information = dictionaryWithContentsOfFile(pathByAppending(bundlePath, "Info.plist"));
    const DictionaryValue information = pairsOf(application.information);
    application.bundleIdentifier = textOr(information, "CFBundleIdentifier", "");
    const std::string name = textOr(information, "CFBundleName", application.bundleIdentifier);
    application.displayName = textOr(information, "CFBundleDisplayName", name);
    application.version = textOr(information, "CFBundleShortVersionString", "1");
    application.bundlePath = bundlePath;
    application.executablePath = pathByAppending(bundlePath, textOr(information, "CFBundleExecutable", name));
    application.isSystem = pathByDeletingLastComponent(bundlePath) == systemApplications;
    application.isPlaceholder = !application.isSystem && isPlaceholder;
    for (const id& item : itemsOf(information["SBAppTags"]))
        if (const auto tag = asString(item))
            application.tags.push_back(tag->text());
    return application;
}

void readFolder(const std::string& folder, std::vector<InstalledApplication>& applications)
{
    const std::vector<std::string> entries = directoryEntries(folder);
    const bool isPlaceholder = std::ranges::find(entries, placeholderMark) != entries.end();
    for (const std::string& entry : entries) {
        if (!isBundle(entry))
            continue;
        InstalledApplication application = readBundle(pathByAppending(folder, entry), isPlaceholder);
        if (!application.bundleIdentifier.empty())
            applications.push_back(std::move(application));
    }
}

/// The system's, then the owner's in the order of their containers; several may have one identifier.
std::vector<InstalledApplication> everyBundle()
{
    const std::vector<std::string> gone = foldersOfRemovedApplications();
    const auto isGone = [&gone](const std::string& folder) { return std::ranges::find(gone, folder) != gone.end(); };
    std::vector<InstalledApplication> applications;
    readFolder(std::string(systemApplications), applications);
    for (const std::string& name : directoryEntries(bundleContainers))
        if (const std::string container = pathByAppending(bundleContainers, name); !isGone(container))
            readFolder(container, applications);
    std::erase_if(applications, [&](const InstalledApplication& one) { return isGone(one.bundlePath); });
    return applications;
}

/// The containers in that place that belong to the identifier.
std::vector<std::string> containersOf(std::string_view place, std::string_view identifier)
{
    const std::vector<std::string> gone = foldersOfRemovedApplications();
    std::vector<std::string> containers;
    for (const std::string& name : directoryEntries(place)) {
        std::string container = pathByAppending(place, name);
        const id metadata = dictionaryWithContentsOfFile(pathByAppending(container, containerMetadata));
        if (const auto owner = asString(pairsOf(metadata)[containerOwnerKey]);
            owner && *owner == identifier && std::ranges::find(gone, container) == gone.end())
            containers.push_back(std::move(container));
    }
    return containers;
}

/// A container goes with its bundle, unless it holds another's too.
std::string folderToRemove(const InstalledApplication& application)
{
    const std::string container = bundleContainerOf(application);
    return std::ranges::count_if(directoryEntries(container), isBundle) == 1 ? container : application.bundlePath;
}

} // namespace

InstalledApplication applicationInBundle(const std::string& bundlePath)
{
    return readBundle(
        bundlePath, fileExists(pathByAppending(pathByDeletingLastComponent(bundlePath), placeholderMark)));
}

std::vector<InstalledApplication> installedApplications()
{
    std::vector<InstalledApplication> applications = everyBundle();
    std::set<std::string> identifiers;
    std::erase_if(applications,
        [&](const InstalledApplication& one) { return !identifiers.insert(one.bundleIdentifier).second; });
    std::ranges::sort(applications, {}, [](const InstalledApplication& application) {
        return std::tie(application.displayName, application.bundleIdentifier);
    });
    return applications;
}

std::optional<std::string> dataContainerOf(std::string_view bundleIdentifier)
{
    const std::vector<std::string> containers = containersOf(dataContainers, bundleIdentifier);
    return containers.empty() ? std::nullopt : std::optional(containers.front());
}

std::optional<std::string> groupContainerOf(std::string_view group)
{
    const std::vector<std::string> containers = containersOf(groupContainers, group);
    return containers.empty() ? std::nullopt : std::optional(containers.front());
}

std::string bundleContainerOf(const InstalledApplication& application)
{
    return pathByDeletingLastComponent(application.bundlePath);
}

namespace {

using InstallationObserver = std::function<void(InstallationChange, const std::string&)>;

InstallationObserver& installationObserver()
{
    static auto* const observer = new InstallationObserver;
    return *observer;
}

} // namespace

void setInstallationObserver(InstallationObserver observer)
{
    installationObserver() = std::move(observer);
}

void tellOfInstallation(InstallationChange change, const std::string& bundleIdentifier)
{
    dispatch_async(dispatch_get_main_queue(), [change, bundleIdentifier] {
        if (installationObserver())
            installationObserver()(change, bundleIdentifier);
    });
}

std::string demoteInstalledApplication(const std::string& bundleIdentifier)
{
    const auto installed = installedApplications();
    const auto found = std::ranges::find(installed, bundleIdentifier, &InstalledApplication::bundleIdentifier);
    if (found == installed.end())
        return "no such application is installed";
    if (found->isSystem)
        return bundleIdentifier + " is the system's own";
    // The mark first: who is killed in the middle leaves a placeholder, not an application without its content.
    if (const int error = writeFileAtomically(pathByAppending(bundleContainerOf(*found), placeholderMark), {}))
        return bundleIdentifier + " can't be marked: " + std::strerror(error);
    for (const std::string& entry : directoryEntries(found->bundlePath))
        if (entry != "Info.plist")
            if (const int error = removeTree(pathByAppending(found->bundlePath, entry)))
                return entry + " stays: " + std::strerror(error);
    return {};
}

FoldersOfApplication foldersOfApplication(std::string_view bundleIdentifier)
{
    FoldersOfApplication folders;
    for (const InstalledApplication& application : everyBundle()) {
        if (application.bundleIdentifier != bundleIdentifier)
            continue;
        folders.isOfSystem = folders.isOfSystem || application.isSystem;
        if (!application.isSystem)
            folders.bundles.push_back(folderToRemove(application));
    }
    folders.data = containersOf(dataContainers, bundleIdentifier);
    return folders;
}

std::string removeInstalledApplication(const std::string& bundleIdentifier)
{
    const ApplicationsLock lock;
    if (std::string problem = lock.problem(); !problem.empty())
        return problem;
    FoldersOfApplication folders = foldersOfApplication(bundleIdentifier);
    if (folders.isOfSystem)
        return bundleIdentifier + " is the system's own";
    if (folders.bundles.empty())
        return {};
    std::ranges::move(folders.data, std::back_inserter(folders.bundles));
    return removeForGood(bundleIdentifier, folders.bundles);
}

} // namespace phone
