#include "record/app_ledger.h"

#include "core/settings.h"
#include "core/text.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "record/executable.h"

#include <algorithm>

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view unknown = "N/A";
constexpr NSInteger fileCountStyle = 0;

/// A file beside the bundle that tells of an installation which its owner may remove, whatever the system says.
constexpr std::string_view removableMarkers[] { "_TrollStore", "_TrollStoreLite" };

std::string pathOf(const id& url)
{
    const auto path = asString(askObject<"path">(url));
    return path ? path->text() : std::string();
}

id dictionaryAtBundle(const std::string& bundlePath)
{
    return bundlePath.empty() ? nil : dictionaryWithContentsOfFile(pathByAppending(bundlePath, "Info.plist"));
}

id factory(const id&, SEL, const id& bundleIdentifier, const id& iconImage)
{
    return ALAppLedger::forBundleIdentifier(bundleIdentifier, iconImage);
}

id sbApplication(const id&, SEL, const id& bundleIdentifier)
{
    return ALAppLedger::sbApplicationForBundleIdentifier(bundleIdentifier);
}

template <auto Fact> using FactType = std::remove_reference_t<decltype(std::declval<BundleFacts&>().*Fact)>;

template <auto Fact> FactType<Fact> bundleFact(const id& self, SEL)
{
    return static_cast<const ALAppLedger&>(*self).bundleFacts().*Fact;
}

template <auto Fact, class Value> void setBundleFact(const id& self, SEL, Value value)
{
    auto& record = static_cast<ALAppLedger&>(*self);
    BundleFacts facts = record.bundleFacts();
    facts.*Fact = value;
    record.setBundleFacts(facts);
}

void offloadApplication(const id&, SEL, const id& bundleIdentifier, const id& completion)
{
    ALAppLedger::offload(bundleIdentifier, completion);
}

constexpr MethodDefinition methods[] {
    method<"_resetAllAppPermissions", &ALAppLedger::resetAllAppPermissionsWithoutAssertion>(),
    method<"activityTypes", &bundleFact<&BundleFacts::activityTypes>>(),
    method<"appBadgeCount", &ALAppLedger::appBadgeCount>(),
    method<"appDocumentsDirectoryURL", &ALAppLedger::appDocumentsDirectoryURL>(),
    method<"appGroupDirectoryURLs", &ALAppLedger::appGroupDirectoryURLs>(),
    getter<"appGroups", &ALAppLedger::appGroups>(),
    classMethod<"appLedgerForBundleIdentifier:iconImage:", &factory>(),
    method<"appLibraryDirectoryURL", &ALAppLedger::appLibraryDirectoryURL>(),
    getter<"appProxy", &ALAppLedger::appProxy>(),
    getter<"appStoreVendable", &ALAppLedger::appStoreVendable>(),
    method<"appUsageDirectoriesURLs", &ALAppLedger::appUsageDirectoriesURLs>(),
    method<"backgroundModes", &bundleFact<&BundleFacts::backgroundModes>>(),
    getter<"bundleIdentifier", &ALAppLedger::bundleIdentifier>(),
    getter<"bundleURL", &ALAppLedger::bundleURL>(),
    method<"cacheDirectoriesURLs", &ALAppLedger::cacheDirectoriesURLs>(),
    method<"cacheDirectoryURL", &ALAppLedger::cacheDirectoryURL>(),
    method<"clearAppCachesWithCompletion:", &ALAppLedger::clearAppCachesWithCompletion>(),
    method<"customIconName", &ALAppLedger::customIconName>(),
    getter<"dataContainerURL", &ALAppLedger::dataContainerURL>(),
    getter<"diskUsage", &ALAppLedger::diskUsage>(),
    getter<"diskUsageString", &ALAppLedger::diskUsageString>(),
    getter<"entitlements", &ALAppLedger::entitlements>(),
    getter<"entitlementsIdentifiers", &ALAppLedger::entitlementsIdentifiers>(),
    method<"getAppUsageDirectorySizeWithCompletion:", &ALAppLedger::getAppUsageDirectorySizeWithCompletion>(),
    method<"getCachesDirectorySizeWithCompletion:", &ALAppLedger::getCachesDirectorySizeWithCompletion>(),
    method<"getPermissions", &ALAppLedger::getPermissions>(),
    method<"hasAppStoreApp", &ALAppLedger::hasAppStoreApp>(),
    getter<"iconImage", &ALAppLedger::iconImage>(),
    getter<"iconView", &ALAppLedger::iconView>(),
    method<"initWithBundleIdentifier:", &ALAppLedger::initWithBundleIdentifier>(),
    method<"internalVersion", &bundleFact<&BundleFacts::internalVersion>>(),
    method<"isApplication", &ALAppLedger::isApplication>(),
    getter<"isDeletable", &ALAppLedger::isDeletable>(),
    method<"isEncrypted", &bundleFact<&BundleFacts::isEncrypted>>(),
    method<"loadData", &ALAppLedger::loadData>(),
    method<"loadMoreInfo", &ALAppLedger::loadMoreInfo>(),
    method<"minimumOSVersion", &bundleFact<&BundleFacts::minimumOSVersion>>(),
    method<"name", &ALAppLedger::name>(),
    classMethod<"offloadApplicationWithBundleIdentifier:completion:", &offloadApplication>(),
    method<"openInAppStore", &ALAppLedger::openInAppStore>(),
    method<"platformVersion", &bundleFact<&BundleFacts::platformVersion>>(),
    method<"queriesSchemes", &bundleFact<&BundleFacts::queriesSchemes>>(),
    method<"resetAllAppPermissions", &ALAppLedger::resetAllAppPermissions>(),
    method<"resetDiskContentWithCompletion:", &ALAppLedger::resetDiskContentWithCompletion>(),
    method<"restoreAppBadgeDefault", &ALAppLedger::restoreAppBadgeDefault>(),
    getter<"sbApplication", &ALAppLedger::sbApplication>(),
    classMethod<"sbApplicationForBundleIdentifier:", &sbApplication>(),
    method<"setActivityTypes:", &setBundleFact<&BundleFacts::activityTypes, const id&>>(),
    method<"setAppBadgeCount:", &ALAppLedger::setAppBadgeCount>(),
    setter<"setAppGroups:", &ALAppLedger::appGroups>(),
    setter<"setAppProxy:", &ALAppLedger::appProxy>(),
    setter<"setAppStoreVendable:", &ALAppLedger::appStoreVendable>(),
    method<"setBackgroundModes:", &setBundleFact<&BundleFacts::backgroundModes, const id&>>(),
    setter<"setBundleIdentifier:", &ALAppLedger::bundleIdentifier>(),
    setter<"setBundleURL:", &ALAppLedger::bundleURL>(),
    method<"setCustomIconName:", &ALAppLedger::setCustomIconName>(),
    setter<"setDataContainerURL:", &ALAppLedger::dataContainerURL>(),
    setter<"setDiskUsage:", &ALAppLedger::diskUsage>(),
    setter<"setDiskUsageString:", &ALAppLedger::diskUsageString>(),
    setter<"setEntitlements:", &ALAppLedger::entitlements>(),
    setter<"setEntitlementsIdentifiers:", &ALAppLedger::entitlementsIdentifiers>(),
    setter<"setIconImage:", &ALAppLedger::iconImage>(),
    setter<"setIconView:", &ALAppLedger::iconView>(),
    method<"setInternalVersion:", &setBundleFact<&BundleFacts::internalVersion, const id&>>(),
    setter<"setIsDeletable:", &ALAppLedger::isDeletable>(),
    method<"setIsEncrypted:", &setBundleFact<&BundleFacts::isEncrypted, bool>>(),
    method<"setMinimumOSVersion:", &setBundleFact<&BundleFacts::minimumOSVersion, const id&>>(),
    method<"setPlatformVersion:", &setBundleFact<&BundleFacts::platformVersion, const id&>>(),
    method<"setQueriesSchemes:", &setBundleFact<&BundleFacts::queriesSchemes, const id&>>(),
    setter<"setSbApplication:", &ALAppLedger::sbApplication>(),
    method<"setUrlSchemes:", &setBundleFact<&BundleFacts::urlSchemes, const id&>>(),
    setter<"setVersion:", &ALAppLedger::version>(),
    method<"tmpDirectoryURL", &ALAppLedger::tmpDirectoryURL>(),
    method<"uninstallAppWithCompletion:", &ALAppLedger::uninstallAppWithCompletion>(),
    method<"urlSchemes", &bundleFact<&BundleFacts::urlSchemes>>(),
    getter<"version", &ALAppLedger::version>(),
};

id group(const id&, SEL, const id& identifier, const id& url)
{
    return ALAppLedgerGroup::groupWithIdentifier(identifier, url);
}

constexpr MethodDefinition groupMethods[] {
    classMethod<"groupWithIdentifier:url:", &group>(),
    getter<"identifier", &ALAppLedgerGroup::identifier>(),
    setter<"setIdentifier:", &ALAppLedgerGroup::identifier>(),
    setter<"setUrl:", &ALAppLedgerGroup::url>(),
    getter<"url", &ALAppLedgerGroup::url>(),
};

} // namespace

const ClassDefinition ALAppLedger::definition {
    .name = "ALAppLedger", .allocate = allocate<ALAppLedger>, .methods = methods
};

const ClassDefinition ALAppLedgerGroup::definition {
    .name = "ALAppLedgerGroup", .allocate = allocate<ALAppLedgerGroup>, .methods = groupMethods
};

id ALAppLedgerGroup::groupWithIdentifier(const id& identifier, const id& url)
{
    const Ref<ALAppLedgerGroup> group = make<ALAppLedgerGroup>();
    group->identifier = identifier;
    group->url = url;
    return group;
}

ALAppLedger::~ALAppLedger()
{
    bundleFacts_.assign(nullptr);
}

Ref<ALAppLedger> ALAppLedger::forBundleIdentifier(const id& bundleIdentifier, const id& iconImage)
{
    const Ref<ALAppLedger> record = make<ALAppLedger>();
    record->initWithBundleIdentifier(bundleIdentifier);
    record->iconImage = iconImage;
    return record;
}

Ref<ALAppLedger> ALAppLedger::forProxy(const id& bundleIdentifier, const id& proxy)
{
    const Ref<ALAppLedger> record = make<ALAppLedger>();
    record->begin(bundleIdentifier, nil, proxy);
    return record;
}

id ALAppLedger::sbApplicationForBundleIdentifier(const id& bundleIdentifier)
{
    const id controller = askObject<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    return askObject<"applicationWithBundleIdentifier:">(controller, bundleIdentifier);
}

id ALAppLedger::initWithBundleIdentifier(const id& identifier)
{
    begin(identifier, sbApplicationForBundleIdentifier(identifier),
        askObject<"applicationProxyForIdentifier:">(id(classNamed<"LSApplicationProxy">()), identifier));
    return this;
}

void ALAppLedger::begin(const id& identifier, const id& application, const id& proxy)
{
    bundleIdentifier = identifier;
    sbApplication = application;
    appProxy = proxy;
    loadData();
}

void ALAppLedger::loadData()
{
    loadVersion();
    if (id known = askObject<"bundleIdentifier">(appProxy))
        bundleIdentifier = std::move(known);
    else if (!bundleIdentifier)
        bundleIdentifier = string(unknown);
    appStoreVendable = ask<"isAppStoreVendable", bool>(appProxy).value_or(appStoreVendable);
    isDeletable = ask<"isDeletable", bool>(appProxy).value_or(true);
    loadBundleURL();
    if (const auto container = ask<"dataContainerURL">(appProxy))
        dataContainerURL = *container;
    loadGroups();
    loadDiskUsage();
    loadMoreInfo();
}

void ALAppLedger::loadVersion()
{
    version = string(unknown);
    const auto shortVersion = ask<"shortVersionString">(appProxy);
    if (!shortVersion)
        return;
    if (*shortVersion)
        version = *shortVersion;
    else if (const auto bundleVersion = ask<"bundleVersion">(appProxy))
        version = *bundleVersion;
}

void ALAppLedger::loadBundleURL()
{
    const auto bundle = ask<"bundleURL">(appProxy);
    if (!bundle)
        return;
    if (*bundle)
        bundleURL = *bundle;
    else if (const auto container = ask<"bundleContainerURL">(appProxy))
        bundleURL = *container;
    const std::string path = pathOf(bundleURL);
    if (!path.empty())
        isDeletable = isDeletable || std::ranges::any_of(removableMarkers, [&path](std::string_view marker) {
            return fileExists(pathByAppending(pathByDeletingLastComponent(path), marker));
        });
}

void ALAppLedger::loadGroups()
{
    const auto containers = ask<"groupContainerURLs">(appProxy);
    if (!containers)
        return;
    const DictionaryValue pairs = pairsOf(*containers);
    std::vector<DictionaryValue::Pair> sorted(pairs.begin(), pairs.end());
    std::ranges::stable_sort(sorted, [](const auto& left, const auto& right) {
        return ask<"localizedCaseInsensitiveCompare:", NSInteger>(left.first, right.first).value_or(0) < 0;
    });
    std::vector<id> groups;
    for (const auto& [identifier, url] : sorted)
        groups.push_back(ALAppLedgerGroup::groupWithIdentifier(identifier, url));
    appGroups = array(std::move(groups));
}

void ALAppLedger::loadDiskUsage()
{
    const auto usage = ask<"staticDiskUsage">(appProxy);
    if (!usage)
        return;
    diskUsage = ask<"integerValue", NSInteger>(*usage).value_or(0);
    diskUsageString = askObject<"stringFromByteCount:countStyle:">(
        id(classNamed<"NSByteCountFormatter">()), ask<"longLongValue", NSInteger>(*usage).value_or(0), fileCountStyle);
}

void ALAppLedger::loadMoreInfo()
{
    entitlements = askObject<"entitlements">(appProxy);
    entitlementsIdentifiers = askObject<"allKeys">(entitlements);
    dispatch_async(dispatch_get_global_queue(QueuePriority::Default), [record = Ref(this), path = pathOf(bundleURL)] {
        record->setBundleFacts(readBundleFacts(dictionaryAtBundle(path), [&path](const std::string& executableName) {
            return isEncryptedExecutable(pathByAppending(path, executableName));
        }));
    });
}

BundleFacts ALAppLedger::bundleFacts() const
{
    const ReadSection section;
    const BundleFacts* const facts = bundleFacts_.load();
    return facts ? *facts : BundleFacts {};
}

void ALAppLedger::setBundleFacts(const BundleFacts& facts)
{
    bundleFacts_.assign(new BundleFacts(facts));
}

id ALAppLedger::name() const
{
    if (id displayName = askObject<"displayName">(sbApplication))
        return displayName;
    if (const auto icon = ask<"icon">(iconView)) {
        if (const auto name = ask<"displayNameForLocation:">(*icon, nil))
            return *name;
        if (const auto name = ask<"displayName">(*icon))
            return *name;
    }
    return string(ALLoc("Web Clip"));
}

id ALAppLedger::customIconName() const
{
    return ALSettings::customAppNameForBundleIdentifier(bundleIdentifier);
}

void ALAppLedger::setCustomIconName(const id& newName)
{
    ALSettings::setCustomAppName(newName, bundleIdentifier);
    ask<"_updateLabel", void>(iconView);
}

bool ALAppLedger::hasAppStoreApp() const
{
    return ask<"integerValue", NSInteger>(askObject<"itemID">(appProxy)).value_or(0) != 0;
}

void ALAppLedger::openInAppStore() const
{
    const id item = askObject<"itemID">(appProxy);
    const auto number = asString(askObject<"description">(item));
    const id application = askObject<"sharedApplication">(id(classNamed<"UIApplication">()));
    ask<"openURL:options:completionHandler:", void>(application,
        url("itms-apps://apps.apple.com/app/id" + (number ? number->text() : "(null)")), dictionary({}), nil);
}

} // namespace appledger
