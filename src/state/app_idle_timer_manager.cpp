#include "state/app_idle_timer_manager.h"

#include "core/policies.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

AppIdleTimerManager& AppIdleTimerManager::sharedManager()
{
    static auto* const manager = new AppIdleTimerManager;
    return *manager;
}

AppIdleTimerManager::AppIdleTimerManager()
{
    reload(policy::keepAwake);
}

void AppIdleTimerManager::processAppForeground(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return;
    dispatch_async(dispatch_get_main_queue(), [this, identifier = std::string(bundleIdentifier)] {
        lastFrontmostBundleID_ = identifier;
        setIdleTimerDisabled(g_keepAwakeApps.contains(identifier));
    });
}

void AppIdleTimerManager::processAppBackground(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return;
    dispatch_async(dispatch_get_main_queue(), [this, identifier = std::string(bundleIdentifier)] {
        if (identifier != lastFrontmostBundleID_ || !isAssertionActive_)
            return;
        setIdleTimerDisabled(false);
        lastFrontmostBundleID_.clear();
    });
}

void AppIdleTimerManager::setIdleTimerDisabled(bool disabled)
{
    dispatch_async(dispatch_get_main_queue(), [this, disabled] {
        const id coordinator = askObject<"sharedInstance">(id(classNamed<"SBIdleTimerGlobalCoordinator">()));
        if (!coordinator || disabled == isAssertionActive_)
            return;
        if (disabled)
            acquire(coordinator);
        else
            release();
    });
}

void AppIdleTimerManager::acquire(const id& coordinator)
{
    auto assertion = ask<"acquireIdleTimerDisableAssertionForReason:">(coordinator, string("AppLedger_KeepAwake"));
    if (!assertion)
        return;
    // A coordinator that gives none counts all the same.
    disableAssertion_ = std::move(*assertion);
    isAssertionActive_ = true;
}

void AppIdleTimerManager::release()
{
    if (!disableAssertion_)
        return;
    ask<"invalidate", void>(disableAssertion_);
    disableAssertion_ = nil;
    isAssertionActive_ = false;
}

} // namespace appledger
