#include "state/app_idle_timer_manager.h"

#include "core/policy_caches.h"

namespace appledger {

AppIdleTimerManager& AppIdleTimerManager::sharedManager()
{
    static auto* const manager = new AppIdleTimerManager;
    return *manager;
}

AppIdleTimerManager::AppIdleTimerManager()
{
    UpdateKeepAwakeAppsCache();
}

} // namespace appledger
