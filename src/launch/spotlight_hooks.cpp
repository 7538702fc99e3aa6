#include "launch/block_launch_hooks.h"
#include "launch/open_service_hooks.h"

namespace appledger {

using namespace platform;

namespace {

Original<bool(id)> original_openApplicationWithBundleID;

bool LSApplicationWorkspace_openApplicationWithBundleID(const id& self, SEL cmd, const id& identifier)
{
    if (launchIsStopped(asString(identifier), LaunchRoad::SpotlightWorkspace))
        return false;
    return original_openApplicationWithBundleID(self, cmd, identifier);
}

constexpr HookRow rows[] {
    openServiceWithPortRow<LaunchRoad::SpotlightOpenServiceWithPort>(),
    openServiceRow<LaunchRoad::SpotlightOpenService>(),
    replace<&LSApplicationWorkspace_openApplicationWithBundleID>(
        "LSApplicationWorkspace", "openApplicationWithBundleID:", original_openApplicationWithBundleID),
};

} // namespace

const HookGroup SpotlightHooks { "SpotlightHooks", rows };

} // namespace appledger
