#pragma once

#include "core/policy_cache.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Whether an application may open, decided on plain values: the lists, and the one application that has
/// just been authenticated.

namespace appledger {

/// The methods of the system through which an application opens. No single one sees every launch.
enum class LaunchRoad {
    HomeScreenTap,
    WorkspaceExecute,
    WorkspaceValidate,
    QuickAction,
    OpenServiceWithPort,
    OpenService,
    Switcher,
    SwitcherWithModifiers,
    SpotlightOpenServiceWithPort,
    SpotlightOpenService,
    SpotlightWorkspace,
};

/// Where a road takes the list of blocked applications from. The hidden and the protected ones come from
/// the caches on every road.
enum class BlockedListSource { Cache, Fresh, FreshSynchronized };

struct LaunchRoadTraits {
    LaunchRoad road;
    std::string_view className;
    std::string_view selector;
    BlockedListSource blockedList;
    bool hasHaptic;
    bool givesReason; ///< the request is told why, if it takes a reason
};

const LaunchRoadTraits& traits(LaunchRoad road) noexcept;
std::span<const LaunchRoadTraits> launchRoads() noexcept; ///< all, in the order of the enumeration

struct LaunchLists {
    IdentifierList requireAuth;
    IdentifierList blocked;
    IdentifierList hidden;
    std::optional<std::string_view> bypass; ///< needs no authentication now
};

enum class LaunchOutcome { Open, Stop, Prompt };

struct LaunchVerdict {
    LaunchOutcome outcome = LaunchOutcome::Open;
    std::string_view identifier {}; ///< the application that is to be stopped or authenticated
    std::string_view key {}; ///< the preference key of the list that decided; "" when the launch passes

    /// What a request is told that takes a reason; "" when the launch passes.
    std::string_view reason() const noexcept;
};

/// For a road that names one application. Authentication comes before blocking: an application on both
/// lists prompts first and is stopped once it is authenticated.
LaunchVerdict decideLaunch(std::string_view identifier, const LaunchLists& lists);

/// For the switcher, whose card may hold several applications: `holds` tells whether it holds one.
LaunchVerdict decideSwitcherLaunch(
    const std::function<bool(std::string_view identifier)>& holds, const LaunchLists& lists);

} // namespace appledger
