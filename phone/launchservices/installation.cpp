#include "phone/launchservices/installation.h"

#include "phone/device/containers.h"
#include "phone/device/data_container.h"
#include "phone/device/removed_applications.h"
#include "phone/device/staging.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace phone {

using namespace platform;

namespace {

bool isIdentifier(std::string_view text)
{
    constexpr std::size_t longest = 255;
    const auto isAllowed = [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == '.'; };
    return !text.empty() && text.size() <= longest && std::ranges::all_of(text, isAllowed) && text.front() != '.'
        && text.back() != '.' && text.find("..") == std::string_view::npos;
}

std::string failed(const std::string& what, int error)
{
    return error == 0 ? "" : what + ": " + std::strerror(error);
}

/// With the new folders announced; "" or what couldn't be done, and then they may be there in part.
std::string makeFolders(const std::string& identifier, const std::string& staged, const std::string& container,
    const std::string& dataContainer)
{
    if (const int error = createDirectories(bundleContainers))
        return failed("can't make " + std::string(bundleContainers), error);
    if (!dataContainer.empty())
        if (const int error = makeDataContainer(dataContainer, identifier))
            return failed("can't make " + dataContainer, error);
    return failed("can't move the application to its place", moveFile(staged, container));
}

} // namespace

std::string bundleIn(const std::string& container)
{
    std::string bundle;
    for (const std::string& name : directoryEntries(container)) {
        if (!name.ends_with(".app"))
            continue;
        if (!bundle.empty())
            return "";
        bundle = pathByAppending(container, name);
    }
    return bundle;
}

std::string problemOfBundle(const std::string& bundlePath)
{
    const std::string list = pathByAppending(bundlePath, "Info.plist");
    if (fileKind(list) != FileKind::Regular)
        return "it has no Info.plist";
    const id information = dictionaryWithContentsOfFile(list);
    if (!asDictionary(information))
        return "its Info.plist isn't a property list with a dictionary";
    const auto identifier = asString(pairsOf(information)["CFBundleIdentifier"]);
    if (!identifier)
        return "its Info.plist names no CFBundleIdentifier";
    if (!isIdentifier(identifier->view()))
        return "\"" + identifier->text()
            + "\" is no bundle identifier: letters, digits, \"-\" and single dots between them, 255 at most";
    const std::string executable = applicationInBundle(bundlePath).executablePath;
    if (pathByDeletingLastComponent(executable) != bundlePath || fileKind(executable) != FileKind::Regular)
        return "its executable isn't there: CFBundleExecutable names a file beside Info.plist";
    return "";
}

InstallationOutcome installStagedContainer(const std::string& stagedContainer)
{
    const std::string bundle = bundleIn(stagedContainer);
    if (bundle.empty())
        return { "there is no application, or there are several" };
    if (std::string problem = problemOfBundle(bundle); !problem.empty())
        return { problem };
    const std::string identifier = applicationInBundle(bundle).bundleIdentifier;
    const ApplicationsLock lock;
    if (std::string problem = lock.problem(); !problem.empty())
        return { problem };
    const FoldersOfApplication former = foldersOfApplication(identifier);
    if (former.isOfSystem)
        return { identifier + " is the system's own" };

    const std::string container = pathByAppending(bundleContainers, newContainerName());
    const std::string dataContainer = former.data.empty() ? pathByAppending(dataContainers, newContainerName()) : "";
    std::vector<std::string> folders { container };
    if (!dataContainer.empty())
        folders.push_back(dataContainer);
    std::string problem = announceFolders(identifier, folders);
    if (!problem.empty())
        return { problem };
    problem = makeFolders(identifier, stagedContainer, container, dataContainer);
    if (problem.empty())
        problem = exchangeFolders(identifier, folders, former.bundles);
    if (!problem.empty()) {
        withdrawFolders(identifier, folders);
        return { problem };
    }
    CFNotificationCenterPostNotification(applicationRegistered);
    return { {}, applicationInBundle(bundleIn(container)), !former.bundles.empty() };
}

} // namespace phone
