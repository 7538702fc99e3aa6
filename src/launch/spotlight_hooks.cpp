#include "launch/block_launch_hooks.h"
#include "launch/open_service_hooks.h"

namespace appledger {

using namespace platform;

namespace {

struct OpenApplicationWithBundleID
    : Hook<OpenApplicationWithBundleID, "LSApplicationWorkspace", "openApplicationWithBundleID:", bool(id)> {
    static bool replacement(const id& self, SEL cmd, const id& identifier)
    {
        if (launchIsStopped(asString(identifier), LaunchRoad::SpotlightWorkspace))
            return false;
        return original(self, cmd, identifier);
    }
};

constexpr HookRow rows[] {
    OpenServiceWithPort<LaunchRoad::SpotlightOpenServiceWithPort>::row(),
    OpenService<LaunchRoad::SpotlightOpenService>::row(),
    OpenApplicationWithBundleID::row(),
};

} // namespace

const HookGroup SpotlightHooks { "SpotlightHooks", rows };

} // namespace appledger
