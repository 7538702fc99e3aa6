#include "platform/darwin/images.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "record/app_ledger.h"

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view installCoordination
    = "/System/Library/PrivateFrameworks/InstallCoordination.framework/InstallCoordination";
constexpr NSInteger demotionReason = 1;

/// Works on a global queue and completes on the main queue.
void inBackground(std::function<bool()> work, const id& completion)
{
    dispatch_async(dispatch_get_global_queue(QueuePriority::Default), [work = std::move(work), completion] {
        const bool isDone = work();
        dispatch_async(dispatch_get_main_queue(), [completion, isDone] { callBlock(completion, isDone); });
    });
}

bool uninstall(const id& bundleIdentifier)
{
    const id workspace = askObject<"defaultWorkspace">(id(classNamed<"LSApplicationWorkspace">()));
    if (const auto isDone = ask<"uninstallApplication:withOptions:error:", bool>(
            workspace, bundleIdentifier, nil, static_cast<id*>(nullptr)))
        return *isDone;
    return ask<"uninstallApplication:withOptions:", bool>(workspace, bundleIdentifier, nil).value_or(false);
}

bool demote(const id& bundleIdentifier)
{
    if (!dlopen(installCoordination, RTLD_LAZY_MODE))
        return false;
    id unread;
    return ask<"demoteAppToPlaceholderWithBundleID:forReason:waitForDeletion:error:", bool>(
        id(classNamed<"IXAppInstallCoordinator">()), bundleIdentifier, demotionReason, false, &unread)
        .value_or(false);
}

} // namespace

void ALAppLedger::uninstallAppWithCompletion(const id& completion)
{
    inBackground([record = Ref(this)] { return uninstall(record->bundleIdentifier); }, completion);
}

void ALAppLedger::offload(const id& bundleIdentifier, const id& completion)
{
    inBackground([bundleIdentifier] { return demote(bundleIdentifier); }, completion);
}

} // namespace appledger
