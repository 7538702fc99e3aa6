#include "phone/device/device_image.h"

#include "phone/device/containers.h"
#include "phone/device/data_container.h"
#include "phone/device/home_widgets.h"
#include "phone/device/removed_applications.h"
#include "phone/device/sample_applications.h"
#include "phone/device/sample_bundle.h"
#include "phone/device/staging.h"
#include "phone/device/web_clips.h"
#include "phone/substrate/injection.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace phone {

using namespace platform;

namespace {

/// Of the library, where it lies on a plain layout.
constexpr std::string_view resourceBundle = "/Library/Application Support/AppLedger/Resources.bundle";

/// What couldn't be done, as a sentence without its end.
struct Failure {
    std::string what;
};

void check(int error, std::string_view path)
{
    if (error != 0)
        throw Failure { "can't write " + std::string(path) + " on the phone: " + std::strerror(error) };
}

void checkProblem(const std::string& problem)
{
    if (!problem.empty())
        throw Failure { problem };
}

/// A name in the form of a UUID that stays the same on every phone.
std::string containerName(std::string_view kind, std::string_view bundleIdentifier)
{
    std::string name;
    std::uint64_t state = 0;
    for (const std::string_view text : { kind, bundleIdentifier })
        for (const char c : text)
            state = (state ^ static_cast<unsigned char>(c)) * 0x100000001B3 + 0x9E3779B97F4A7C15;
    for (std::size_t index = 0; index < 32; ++index) {
        if (index == 8 || index == 12 || index == 16 || index == 20)
            name += '-';
        state = state * 6364136223846793005 + 1442695040888963407;
        name += "0123456789ABCDEF"[state >> 60];
    }
    return name;
}

void install(const SampleApplication& application)
{
    const std::string folder = application.isSystem
        ? "/Applications"
        : std::string(bundleContainers) + "/" + containerName("bundle", application.bundleIdentifier);
    checkProblem(writeSampleBundle(application, folder));
    const std::string data = pathByAppending(dataContainers, containerName("data", application.bundleIdentifier));
    check(makeDataContainer(data, application.bundleIdentifier), data);
    // Who shares a container is said by the applications' entitlements.
    for (const std::string_view group : application.declarations.groups) {
        const std::string shared = pathByAppending(groupContainers, containerName("group", group));
        check(makeGroupContainer(shared, group), shared);
    }
}

/// Of a file of the host; "" where it can't be read.
std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

void installLibrary(const std::string& libraryPath)
{
    const std::string content = contentOf(libraryPath);
    if (content.empty())
        throw Failure { "can't read the library " + libraryPath };
    const std::string installed = pathByAppending(substrateFolder, "AppLedger.dylib");
    check(createDirectories(substrateFolder), substrateFolder);
    if (readFile(installed) != content)
        check(writeFileAtomically(installed, content, 0755), installed);
    const id filter = dictionary({ { "Filter",
        dictionary({ { "Bundles", array({ "com.apple.springboard", "com.apple.Spotlight", "com.apple.AppStore" }) },
            { "Executables", array({ "appstored", "itunesstored" }) }, { "Mode", string("Any") } }) } });
    const std::string filterPath = pathByAppending(substrateFolder, "AppLedger.plist");
    check(writePropertyList(filter, filterPath, PropertyListFormat::Xml), filterPath);
}

/// What isn't there as it is beside the library is written; what else lies there stays.
void installResources(const std::string& libraryPath)
{
    const std::filesystem::path bundle = std::filesystem::path(libraryPath).parent_path() / "Resources.bundle";
    std::error_code error;
    if (!std::filesystem::is_directory(bundle, error))
        return; // a library without pictures works too
    check(createDirectories(resourceBundle), resourceBundle);
    for (const auto& entry : std::filesystem::directory_iterator(bundle, error)) {
        const std::string content = contentOf(entry.path());
        const std::string installed = pathByAppending(resourceBundle, entry.path().filename().string());
        if (readFile(installed) != content)
            check(writeFileAtomically(installed, content), installed);
    }
}

} // namespace

DevicePreparation prepareDevice(const std::string& root, const std::string& libraryPath)
{
    if (!setDeviceRoot(root))
        return { .problem = "can't open " + root + " as the phone's root" };
    DevicePreparation preparation;
    clearStaging();
    try {
        check(createDirectories("/var/mobile/Library/Preferences"), "/var/mobile/Library/Preferences");
        for (const SampleApplication& application : sampleApplications()) {
            if (wasRemoved(application.bundleIdentifier))
                continue;
            try {
                install(application);
            } catch (const Failure& failure) {
                preparation.passedOver.push_back(
                    std::string(application.bundleIdentifier) + " is passed over: " + failure.what);
            }
        }
        for (const std::string& problem : { installSampleWebClips(), installSampleWidgets() })
            if (!problem.empty())
                preparation.passedOver.push_back(problem);
        installLibrary(libraryPath);
        installResources(libraryPath);
    } catch (const Failure& failure) {
        preparation.problem = failure.what;
    }
    return preparation;
}

} // namespace phone
