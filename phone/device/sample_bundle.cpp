#include "phone/device/sample_bundle.h"

#include "phone/device/containers.h"
#include "phone/device/mach_o.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <cstring>

namespace phone {

using namespace platform;

namespace {

/// What couldn't be done, as a sentence without its end.
struct Failure {
    std::string what;
};

void check(int error, std::string_view path)
{
    if (error != 0)
        throw Failure { "can't write " + std::string(path) + " on the phone: " + std::strerror(error) };
}

void writeIfMissing(const std::string& path, const id& propertyList)
{
    if (!fileExists(path))
        check(writePropertyList(propertyList, path, PropertyListFormat::Binary), path);
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

id information(const SampleApplication& application, std::string_view version)
{
    std::vector<std::pair<id, id>> pairs { { string("CFBundleIdentifier"), string(application.bundleIdentifier) },
        { string("CFBundleName"), string(application.name) },
        { string("CFBundleDisplayName"), string(application.name) },
        { string("CFBundleExecutable"), string(application.name) }, { string("CFBundlePackageType"), string("APPL") },
        { string("CFBundleShortVersionString"), string(version) }, { string("CFBundleVersion"), string(version) },
        { string("MinimumOSVersion"), string("12.0") }, { string("DTPlatformVersion"), string("16.0") } };
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

void writeBundle(const SampleApplication& application, const std::string& folder, std::string_view version)
{
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
    writeIfMissing(pathByAppending(bundle, "Info.plist"), information(application, version));
}

} // namespace

std::string writeSampleBundle(const SampleApplication& application, const std::string& folder, std::string_view version)
{
    try {
        writeBundle(application, folder, version.empty() ? application.version : version);
    } catch (const Failure& failure) {
        return failure.what;
    }
    return "";
}

} // namespace phone
