#pragma once

#include "core/hook_group.h"
#include "launch/launch_gate.h"
#include "platform/foundation/values.h"

/// The open service exists in SpringBoard and in Spotlight, and its two methods are replaced in both: by
/// the same code on another road.

namespace appledger {

template <LaunchRoad Road> struct OpenServiceWithPort
    : Hook<OpenServiceWithPort<Road>, "FBSOpenApplicationService", "openApplication:withOptions:clientPort:completion:",
          void(platform::id, platform::id, unsigned, platform::id)> {
    static void replacement(const platform::id& self, platform::SEL cmd, const platform::id& identifier,
        const platform::id& options, unsigned clientPort, const platform::id& completion)
    {
        if (launchIsStopped(platform::asString(identifier), Road))
            return;
        OpenServiceWithPort::original(self, cmd, identifier, options, clientPort, completion);
    }
};

template <LaunchRoad Road> struct OpenService
    : Hook<OpenService<Road>, "FBSOpenApplicationService",
          "openApplication:withOptions:completion:", void(platform::id, platform::id, platform::id)> {
    static void replacement(const platform::id& self, platform::SEL cmd, const platform::id& identifier,
        const platform::id& options, const platform::id& completion)
    {
        if (launchIsStopped(platform::asString(identifier), Road))
            return;
        OpenService::original(self, cmd, identifier, options, completion);
    }
};

} // namespace appledger
