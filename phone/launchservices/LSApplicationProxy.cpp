#include "phone/device/containers.h"
#include "phone/device/mach_o.h"
#include "phone/launchservices/installed_applications.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

std::int64_t allocatedSizeOfTree(const std::string& path)
{
    const id entries
        = send<"enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:">(NSFileManager::defaultManager(),
            fileURL(path), nil, static_cast<NSUInteger>(DirectoryEnumerationOptions::None), nil);
    const id key = string("NSURLTotalFileAllocatedSizeKey");
    std::int64_t total = 0;
    while (const id entry = send<"nextObject">(entries)) {
        id size;
        send<"getResourceValue:forKey:error:", bool>(entry, &size, key, static_cast<id*>(nullptr));
        total += asInteger(size).value_or(0);
    }
    return total;
}

/// What the system knows of an installed application.
class LSApplicationProxy : public NSObject {
public:
    InstalledApplication application;

    id bundleIdentifier() const { return textOrNil(application.bundleIdentifier); }
    id localizedName() const { return textOrNil(application.displayName); }
    id localizedShortName() const { return information("CFBundleName"); }
    id shortVersionString() const { return information("CFBundleShortVersionString"); }
    id bundleVersion() const { return information("CFBundleVersion"); }
    id bundleUrl() const { return urlOrNil(application.bundlePath); }
    id bundleContainerUrl() const { return application.isSystem ? nil : urlOrNil(bundleContainerOf(application)); }
    id dataContainerUrl() const { return urlOrNil(dataContainerOf(application.bundleIdentifier).value_or("")); }
    /// What its bundle takes on the disk; a container's other files are few.
    id staticDiskUsage() const { return number(allocatedSizeOfTree(application.bundlePath)); }
    bool isAppStoreVendable() const { return itemId() != nullptr; }
    bool isDeletable() const { return !application.isSystem; }
    id entitlements() const
    {
        const id found = entitlementsOfExecutable(application.executablePath);
        return asDictionary(found) ? found : nil;
    }

    id groupContainerUrls() const
    {
        std::vector<std::pair<id, id>> pairs;
        for (const id& group : itemsOf(pairsOf(entitlements())["com.apple.security.application-groups"]))
            if (const auto identifier = asString(group))
                if (const auto container = groupContainerOf(*identifier))
                    pairs.emplace_back(group, fileURL(*container));
        return dictionary(std::move(pairs));
    }

    /// The number under which the store sells it; nil for what came another way.
    id itemId() const
    {
        if (application.isSystem || application.bundlePath.empty())
            return nil;
        const id known = dictionaryWithContentsOfFile(pathByAppending(bundleContainerOf(application), storeMetadata));
        const id item = pairsOf(known)[storeIdentifierKey];
        return numberKind(item) ? item : nil;
    }

private:
    static id textOrNil(const std::string& text) { return text.empty() ? nil : string(text); }
    static id urlOrNil(const std::string& path) { return path.empty() ? nil : fileURL(path); }

    id information(std::string_view key) const
    {
        const id value = pairsOf(application.information)[key];
        return asString(value) ? value : nil;
    }
};

id proxyForIdentifier(const id&, SEL, const id& identifier)
{
    const auto text = asString(identifier);
    if (!text)
        return nil;
    const auto installed = installedApplications();
    const auto found = std::ranges::find(installed, text->view(), &InstalledApplication::bundleIdentifier);
    return found == installed.end() ? nil : proxyOf(*found);
}

constexpr MethodDefinition methods[] {
    classMethod<"applicationProxyForIdentifier:", &proxyForIdentifier>(),
    method<"bundleContainerURL", &LSApplicationProxy::bundleContainerUrl>(),
    method<"bundleIdentifier", &LSApplicationProxy::bundleIdentifier>(),
    method<"bundleURL", &LSApplicationProxy::bundleUrl>(),
    method<"bundleVersion", &LSApplicationProxy::bundleVersion>(),
    method<"dataContainerURL", &LSApplicationProxy::dataContainerUrl>(),
    method<"entitlements", &LSApplicationProxy::entitlements>(),
    method<"groupContainerURLs", &LSApplicationProxy::groupContainerUrls>(),
    method<"isAppStoreVendable", &LSApplicationProxy::isAppStoreVendable>(),
    method<"isDeletable", &LSApplicationProxy::isDeletable>(),
    method<"itemID", &LSApplicationProxy::itemId>(),
    method<"localizedName", &LSApplicationProxy::localizedName>(),
    method<"localizedShortName", &LSApplicationProxy::localizedShortName>(),
    method<"shortVersionString", &LSApplicationProxy::shortVersionString>(),
    method<"staticDiskUsage", &LSApplicationProxy::staticDiskUsage>(),
};

} // namespace

extern const ClassDefinition LSApplicationProxy_class {
    .name = "LSApplicationProxy", .allocate = allocate<LSApplicationProxy>, .methods = methods
};

id proxyOf(const InstalledApplication& application)
{
    id proxy = send<"new">(id(registerClass(LSApplicationProxy_class)));
    static_cast<LSApplicationProxy&>(*proxy).application = application;
    return proxy;
}

} // namespace phone
