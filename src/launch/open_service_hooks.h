#pragma once

#include "core/hook_group.h"
#include "launch/launch_gate.h"
#include "platform/foundation/values.h"

/// The open service exists in SpringBoard and in Spotlight, and its two methods are replaced in both: by
/// the same code on another road.

namespace appledger {

template <LaunchRoad Road> struct OpenServiceHook {
    static inline platform::Original<void(platform::id, platform::id, unsigned, platform::id)> withPort;
    static inline platform::Original<void(platform::id, platform::id, platform::id)> withoutPort;

    static void openWithPort(const platform::id& self, platform::SEL cmd, const platform::id& identifier,
        const platform::id& options, unsigned clientPort, const platform::id& completion)
    {
        if (launchIsStopped(platform::asString(identifier), Road))
            return;
        withPort(self, cmd, identifier, options, clientPort, completion);
    }

    static void open(const platform::id& self, platform::SEL cmd, const platform::id& identifier,
        const platform::id& options, const platform::id& completion)
    {
        if (launchIsStopped(platform::asString(identifier), Road))
            return;
        withoutPort(self, cmd, identifier, options, completion);
    }
};

template <LaunchRoad Road> constexpr HookRow openServiceWithPortRow()
{
    using Hook = OpenServiceHook<Road>;
    return replace<&Hook::openWithPort>(
        "FBSOpenApplicationService", "openApplication:withOptions:clientPort:completion:", Hook::withPort);
}

template <LaunchRoad Road> constexpr HookRow openServiceRow()
{
    using Hook = OpenServiceHook<Road>;
    return replace<&Hook::open>(
        "FBSOpenApplicationService", "openApplication:withOptions:completion:", Hook::withoutPort);
}

} // namespace appledger
