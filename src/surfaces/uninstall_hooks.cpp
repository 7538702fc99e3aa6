#include "surfaces/uninstall_hooks.h"

#include "core/bundle_identifier.h"
#include "core/haptics.h"
#include "core/policies.h"

namespace appledger {

using namespace platform;

namespace {

bool isProtected(const id& icon)
{
    const auto identifier = applicationOfIcon(icon);
    return identifier && g_blockedUninstallApps.contains(*identifier);
}

struct IsUninstallSupported : Hook<IsUninstallSupported, "SBLeafIcon", "isUninstallSupported", bool()> {
    static bool replacement(const id& self, SEL cmd) { return !isProtected(self) && original(self, cmd); }
};

/// Answers the removal of a protected application with a tap alone; whoever waits for its completion waits on.
bool removalIsStopped(const id& icon)
{
    if (!isProtected(icon))
        return false;
    playImpactHaptic();
    return true;
}

struct UninstallWithCompletion
    : Hook<UninstallWithCompletion, "SBHIconManager", "uninstallIcon:animate:completion:", void(id, bool, id)> {
    static void replacement(const id& self, SEL cmd, const id& icon, bool animate, const id& completion)
    {
        if (!removalIsStopped(icon))
            original(self, cmd, icon, animate, completion);
    }
};

struct UninstallAnimated : Hook<UninstallAnimated, "SBHIconManager", "uninstallIcon:animate:", void(id, bool)> {
    static void replacement(const id& self, SEL cmd, const id& icon, bool animate)
    {
        if (!removalIsStopped(icon))
            original(self, cmd, icon, animate);
    }
};

struct Uninstall : Hook<Uninstall, "SBHIconManager", "uninstallIcon:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& icon)
    {
        if (!removalIsStopped(icon))
            original(self, cmd, icon);
    }
};

constexpr HookRow rows[] {
    IsUninstallSupported::row(),
    UninstallWithCompletion::row(),
    UninstallAnimated::row(),
    Uninstall::row(),
};

} // namespace

const HookRows uninstallProtectionRows { rows };

} // namespace appledger
