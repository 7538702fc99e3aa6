#include "phone/device/device_image.h"

#include "phone/device/containers.h"
#include "phone/device/home_widgets.h"
#include "phone/device/mach_o.h"
#include "phone/device/removed_applications.h"
#include "phone/device/sample_applications.h"
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

void writeIfMissing(const std::string& path, const id& propertyList)
{
    if (!fileExists(path))
        check(writePropertyList(propertyList, path, PropertyListFormat::Binary), path);
}

/// A container of that name in that place, with these folders, that belongs to the identifier.
void makeContainer(std::string_view place, const std::string& name, std::string_view identifier,
    std::initializer_list<std::string_view> folders)
{
    const std::string container = pathByAppending(place, name);
    for (const std::string_view folder : folders)
        check(createDirectories(container + std::string(folder)), container);
    writeIfMissing(
        pathByAppending(container, containerMetadata), dictionary({ { containerOwnerKey, string(identifier) } }));
}

id texts(Texts list)
{
    std::vector<id> items;
    for (const std::string_view text : list)
        items.push_back(string(text));
    return array(std::move(items));
}

id urlType(const SampleApplication& application, const id& schemes)
{
    return dictionary(
        { { "CFBundleURLName", string(application.bundleIdentifier) }, { "CFBundleURLSchemes", schemes } });
}

id information(const SampleApplication& application)
{
    std::vector<std::pair<id, id>> pairs { { string("CFBundleIdentifier"), string(application.bundleIdentifier) },
        { string("CFBundleName"), string(application.name) },
        { string("CFBundleDisplayName"), string(application.name) },
        { string("CFBundleExecutable"), string(application.name) }, { string("CFBundlePackageType"), string("APPL") },
        { string("CFBundleShortVersionString"), string(application.version) },
        { string("CFBundleVersion"), string(application.version) }, { string("MinimumOSVersion"), string("12.0") },
        { string("DTPlatformVersion"), string("16.0") } };
    std::vector<id> urlTypes;
    if (!application.urlScheme.empty())
        urlTypes.push_back(urlType(application, array({ application.urlScheme })));
    if (!application.declarations.otherSchemes.empty())
        urlTypes.push_back(urlType(application, texts(application.declarations.otherSchemes)));
    if (!urlTypes.empty())
        pairs.emplace_back(string("CFBundleURLTypes"), array(std::move(urlTypes)));
    const std::pair<std::string_view, Texts> lists[] { { "LSApplicationQueriesSchemes",
                                                           application.declarations.queriesSchemes },
        { "NSUserActivityTypes", application.declarations.activityTypes },
        { "UIBackgroundModes", application.declarations.backgroundModes } };
    for (const auto& [key, list] : lists)
        if (!list.empty())
            pairs.emplace_back(string(key), texts(list));
    return dictionary(std::move(pairs));
}

/// An XML property list.
std::string entitlements(const SampleApplication& application)
{
    const std::string team = application.isSystem ? "" : "EXAMPLE001.";
    std::vector<std::pair<id, id>> pairs {
        { string("application-identifier"), string(team + std::string(application.bundleIdentifier)) },
        { string("get-task-allow"), boolean(false) },
        { string("keychain-access-groups"), array({ team + std::string(application.bundleIdentifier) }) },
    };
    if (!application.declarations.groups.empty())
        pairs.emplace_back(string("com.apple.security.application-groups"), texts(application.declarations.groups));
    return dataFromPropertyList(dictionary(std::move(pairs)), PropertyListFormat::Xml).value_or(std::string());
}

void install(const SampleApplication& application)
{
    const std::string folder = application.isSystem
        ? "/Applications"
        : std::string(bundleContainers) + "/" + containerName("bundle", application.bundleIdentifier);
    const std::string bundle = folder + "/" + std::string(application.name) + ".app";
    check(createDirectories(bundle), bundle);
    const bool isSold = application.storeIdentifier != 0;
    const std::string executable = pathByAppending(bundle, application.name);
    if (!fileExists(executable) && !fileExists(pathByAppending(folder, placeholderMark)))
        check(writeFileAtomically(executable,
                  machOExecutable(isSold ? Encryption::Set : Encryption::Absent, entitlements(application)), 0755),
            executable);
    if (isSold)
        writeIfMissing(pathByAppending(folder, storeMetadata),
            dictionary({ { storeIdentifierKey, number(application.storeIdentifier) } }));
    // Last, since a folder counts as an application once it has this file.
    writeIfMissing(pathByAppending(bundle, "Info.plist"), information(application));
}

/// Who shares a container is said by the applications' entitlements.
void makeGroupContainers(const SampleApplication& application)
{
    for (const std::string_view group : application.declarations.groups)
        makeContainer(groupContainers, containerName("group", group), group, { "/Library/Caches" });
}

void makeDataContainer(const SampleApplication& application)
{
    makeContainer(dataContainers, containerName("data", application.bundleIdentifier), application.bundleIdentifier,
        { "/Documents", "/Library/Caches", "/Library/Preferences", "/tmp" });
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
    try {
        check(createDirectories("/var/mobile/Library/Preferences"), "/var/mobile/Library/Preferences");
        for (const SampleApplication& application : sampleApplications()) {
            if (wasRemoved(application.bundleIdentifier))
                continue;
            try {
                install(application);
                makeDataContainer(application);
                makeGroupContainers(application);
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
