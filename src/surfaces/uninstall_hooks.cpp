#include "surfaces/uninstall_hooks.h"

#include "core/bundle_identifier.h"
#include "core/haptics.h"
#include "core/policy_caches.h"

namespace appledger {

using namespace platform;

namespace {

bool isProtected(const id& icon)
{
    const auto identifier = applicationOfIcon(icon);
    return identifier && g_blockedUninstallApps.contains(*identifier);
}

Original<bool()> original_isUninstallSupported;

bool SBLeafIcon_isUninstallSupported(const id& self, SEL cmd)
{
    return !isProtected(self) && original_isUninstallSupported(self, cmd);
}

/// Answers the removal of a protected application with a tap alone; whoever waits for its completion waits on.
bool removalIsStopped(const id& icon)
{
    if (!isProtected(icon))
        return false;
    playImpactHaptic();
    return true;
}

Original<void(id, bool, id)> original_uninstallWithCompletion;

void SBHIconManager_uninstallWithCompletion(const id& self, SEL cmd, const id& icon, bool animate, const id& completion)
{
    if (!removalIsStopped(icon))
        original_uninstallWithCompletion(self, cmd, icon, animate, completion);
}

Original<void(id, bool)> original_uninstallAnimated;

void SBHIconManager_uninstallAnimated(const id& self, SEL cmd, const id& icon, bool animate)
{
    if (!removalIsStopped(icon))
        original_uninstallAnimated(self, cmd, icon, animate);
}

Original<void(id)> original_uninstall;

void SBHIconManager_uninstall(const id& self, SEL cmd, const id& icon)
{
    if (!removalIsStopped(icon))
        original_uninstall(self, cmd, icon);
}

constexpr HookRow rows[] {
    replace<&SBLeafIcon_isUninstallSupported>("SBLeafIcon", "isUninstallSupported", original_isUninstallSupported),
    replace<&SBHIconManager_uninstallWithCompletion>(
        "SBHIconManager", "uninstallIcon:animate:completion:", original_uninstallWithCompletion),
    replace<&SBHIconManager_uninstallAnimated>("SBHIconManager", "uninstallIcon:animate:", original_uninstallAnimated),
    replace<&SBHIconManager_uninstall>("SBHIconManager", "uninstallIcon:", original_uninstall),
};

} // namespace

const HookRows uninstallProtectionRows { rows };

} // namespace appledger
