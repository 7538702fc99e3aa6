#include "phone/appstoredaemon/delivery.h"

#include "phone/device/containers.h"
#include "phone/device/sample_bundle.h"
#include "phone/device/staging.h"
#include "phone/launchservices/installation.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cstring>

namespace phone {

using namespace platform;

namespace {

constexpr int deepest = 64; ///< folders of a bundle in each other

/// "" or what couldn't be copied. What is neither a file nor a folder is left out.
std::string copyTree(const std::string& from, const std::string& to, const std::string& executable, int depth = 0)
{
    if (depth > deepest)
        return from + ": its folders are too deep";
    if (const int error = createDirectories(to))
        return to + ": " + std::strerror(error);
    for (const std::string& name : directoryEntries(from)) {
        const std::string path = pathByAppending(from, name);
        const std::string copy = pathByAppending(to, name);
        const FileKind kind = fileKind(path);
        if (kind == FileKind::Directory)
            if (std::string problem = copyTree(path, copy, executable, depth + 1); !problem.empty())
                return problem;
        if (kind != FileKind::Regular)
            continue;
        const FileReading reading = tryToReadFile(path);
        const int error = reading.content
            ? writeFileAtomically(copy, *reading.content, path == executable ? 0755 : 0644)
            : reading.error;
        if (error != 0)
            return path + ": " + std::strerror(error);
    }
    return "";
}

std::string stageNextVersion(const InstalledApplication& application, const std::string& version, const std::string& to)
{
    const std::size_t start = application.bundlePath.rfind('/') + 1;
    const std::string bundle = pathByAppending(to, application.bundlePath.substr(start));
    if (std::string problem = copyTree(application.bundlePath, bundle, application.executablePath); !problem.empty())
        return problem;
    id information = dictionaryBySetting(application.information, "CFBundleShortVersionString", string(version));
    information = dictionaryBySetting(information, "CFBundleVersion", string(version));
    int error = writePropertyList(information, pathByAppending(bundle, "Info.plist"), PropertyListFormat::Binary);
    const auto sold = readFile(pathByAppending(bundleContainerOf(application), storeMetadata));
    if (error == 0 && sold)
        error = writeFileAtomically(pathByAppending(to, storeMetadata), *sold);
    return error == 0 ? "" : bundle + ": " + std::strerror(error);
}

} // namespace

std::string versionAfter(const std::string& version)
{
    const std::size_t start = version.find_last_not_of("0123456789") + 1;
    if (start == version.size() || version.size() - start > 9)
        return version + ".1";
    return version.substr(0, start) + std::to_string(std::stoul(version.substr(start)) + 1);
}

std::string deliverFromStore(const std::string& bundleIdentifier)
{
    const auto all = installedApplications();
    const auto installed = std::ranges::find(all, bundleIdentifier, &InstalledApplication::bundleIdentifier);
    const StagedContainer staged;
    if (!staged.problem().empty())
        return staged.problem();
    const std::string version = installed == all.end() ? "" : versionAfter(installed->version);
    std::string problem = installed == all.end() || installed->isPlaceholder
        ? stageSample(bundleIdentifier, version, staged.path())
        : stageNextVersion(*installed, version, staged.path());
    return problem.empty() ? installStagedContainer(staged.path()).problem : problem;
}

std::string stageSample(
    const std::string& bundleIdentifier, const std::string& version, const std::string& stagedContainer)
{
    const auto samples = sampleApplications();
    const auto sample = std::ranges::find(samples, bundleIdentifier, &SampleApplication::bundleIdentifier);
    if (sample == samples.end())
        return "there is no such application";
    if (sample->isSystem)
        return bundleIdentifier + " is the system's own";
    return writeSampleBundle(*sample, stagedContainer, version);
}

} // namespace phone
