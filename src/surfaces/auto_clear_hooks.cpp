#include "surfaces/auto_clear_hooks.h"

#include "core/policies.h"
#include "platform/dispatch/queue.h"
#include "platform/runtime/message.h"
#include "surfaces/auto_clear_decision.h"
#include "surfaces/cache_clear.h"

#include <chrono>

namespace appledger {

using namespace platform;
using namespace std::chrono_literals;

namespace {

void clearAfterExit(const id& process)
{
    const id identifier = askObject<"bundleIdentifier">(process);
    const auto text = asString(identifier);
    if (text && clears(decideClearAtExit(*text, g_autoClearCacheApps.read().list(), g_globalAutoClearCache)))
        ALPerformBackgroundCacheClear(identifier);
}

/// Reads the domain itself: what the caches hold may be older than SpringBoard's half minute.
void sweep()
{
    const auto defaults = synchronizedPreferences();
    const id listed = defaults->objectForKey(policy::autoClear.key);
    if (!defaults->boolForKey(preference::everyCacheClears)) {
        for (const id& identifier : itemsOf(listed))
            ALPerformBackgroundCacheClear(identifier);
        return;
    }
    const id workspace = askObject<"defaultWorkspace">(id(classNamed<"LSApplicationWorkspace">()));
    const id applications = askObject<"allInstalledApplications">(workspace);
    for (const id& application : itemsOf(applications)) {
        const id identifier = askObject<"bundleIdentifier">(application);
        const auto text = asString(identifier);
        if (text && clears(decideClearInSweep(*text)))
            ALPerformBackgroundCacheClear(identifier);
    }
}

struct ApplicationDidFinishLaunching
    : Hook<ApplicationDidFinishLaunching, "SpringBoard", "applicationDidFinishLaunching:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& application)
    {
        original(self, cmd, application);
        dispatch_after(30s, dispatch_get_global_queue(QueuePriority::Background), sweep);
    }
};

struct ProcessDidExit : Hook<ProcessDidExit, "FBProcessManager", "processDidExit:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& process)
    {
        original(self, cmd, process);
        clearAfterExit(process);
    }
};

struct ProcessDidExitWithContext
    : Hook<ProcessDidExitWithContext, "FBProcess", "_processDidExitWithContext:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& context)
    {
        original(self, cmd, context);
        clearAfterExit(self);
    }
};

constexpr HookRow rows[] {
    ApplicationDidFinishLaunching::row(),
    ProcessDidExit::row(),
    ProcessDidExitWithContext::row(),
};

} // namespace

const HookGroup AutoClearHooks { "AutoClearHooks", rows };

} // namespace appledger
