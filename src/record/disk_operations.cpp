#include "core/empty_directory.h"
#include "core/late_bound_functions.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "record/app_ledger.h"

#include <initializer_list>

namespace appledger {

using namespace platform;

namespace {

constexpr NSInteger fileCountStyle = 0;
constexpr int terminationReason = 1;

id below(const id& url, std::string_view path)
{
    return askObject<"URLByAppendingPathComponent:">(url, string(path));
}

id fileManager()
{
    return send<"defaultManager">(id(classNamed<"NSFileManager">()));
}

void onGlobalQueue(Work work)
{
    dispatch_async(dispatch_get_global_queue(QueuePriority::Default), std::move(work));
}

void complete(const id& completion)
{
    dispatch_async(dispatch_get_main_queue(), [completion] { callBlock(completion); });
}

/// What can't be read counts nothing.
void measure(const id& directories, const id& completion)
{
    unsigned long total = 0;
    for (const id& directory : itemsOf(directories)) {
        unsigned long size = 0;
        if (send<"fileExistsAtPath:", bool>(fileManager(), askObject<"path">(directory)))
            send<"nr_getAllocatedSize:ofDirectoryAtURL:error:", bool>(
                fileManager(), &size, directory, static_cast<id*>(nullptr));
        total += size;
    }
    const id text = askObject<"stringFromByteCount:countStyle:">(
        id(classNamed<"NSByteCountFormatter">()), static_cast<NSInteger>(total), fileCountStyle);
    dispatch_async(dispatch_get_main_queue(), [completion, text] { callBlock(completion, text); });
}

void empty(const id& directories)
{
    for (const id& directory : itemsOf(directories))
        emptyDirectory(directory);
}

} // namespace

id ALAppLedger::cacheDirectoryURL() const
{
    return below(dataContainerURL, "/Library/Caches/");
}

id ALAppLedger::tmpDirectoryURL() const
{
    return below(dataContainerURL, "/tmp/");
}

id ALAppLedger::appLibraryDirectoryURL() const
{
    return below(dataContainerURL, "/Library/");
}

id ALAppLedger::appDocumentsDirectoryURL() const
{
    return below(dataContainerURL, "/Documents/");
}

id ALAppLedger::cacheDirectoriesURLs() const
{
    return array(std::vector { cacheDirectoryURL(), tmpDirectoryURL() });
}

id ALAppLedger::appUsageDirectoriesURLs() const
{
    return array(std::vector { appLibraryDirectoryURL(), tmpDirectoryURL(), appDocumentsDirectoryURL() });
}

id ALAppLedger::appGroupDirectoryURLs() const
{
    std::vector<id> urls;
    for (const id& group : itemsOf(appGroups))
        urls.push_back(send<"url">(group));
    return array(std::move(urls));
}

void ALAppLedger::getCachesDirectorySizeWithCompletion(const id& completion)
{
    onGlobalQueue([record = Ref(this), completion] { measure(record->cacheDirectoriesURLs(), completion); });
}

void ALAppLedger::getAppUsageDirectorySizeWithCompletion(const id& completion)
{
    onGlobalQueue([record = Ref(this), completion] { measure(record->appUsageDirectoriesURLs(), completion); });
}

void ALAppLedger::clearAppCachesWithCompletion(const id& completion)
{
    onGlobalQueue([record = Ref(this), completion] {
        empty(record->cacheDirectoriesURLs());
        complete(completion);
    });
}

void ALAppLedger::resetDiskContentWithCompletion(const id& completion)
{
    onGlobalQueue([record = Ref(this), completion] {
        const auto assertion = SBSApplicationTerminationAssertionCreateWithError(
            nullptr, record->bundleIdentifier, terminationReason, nullptr);
        empty(record->appUsageDirectoriesURLs());
        if (const id library = record->appLibraryDirectoryURL())
            ask<"createDirectoryAtURL:withIntermediateDirectories:attributes:error:", bool>(
                fileManager(), below(library, "Preferences"), true, nil, static_cast<id*>(nullptr));
        if (record->isApplication())
            record->resetAllAppPermissionsWithoutAssertion();
        if (assertion)
            SBSApplicationTerminationAssertionInvalidate(assertion);
        complete(completion);
    });
}

} // namespace appledger
