#pragma once

#include "launch/launch_decision.h"
#include "platform/foundation/values.h"
#include "platform/runtime/object.h"

#include <functional>
#include <optional>
#include <string_view>

/// What every road does with the decision: it reads the lists as the road reads them, decides, and
/// carries the verdict out.

namespace appledger {

/// Whether the road must not call the method that it replaced. Without an identifier the launch passes.
/// `request` is told the reason where the road gives one and the request takes it.
bool launchIsStopped(const std::optional<platform::StringValue>& identifier, LaunchRoad road,
    const platform::id& request = platform::nil);

/// The same for a card of the switcher, which may hold several applications.
bool switcherLaunchIsStopped(const std::function<bool(std::string_view identifier)>& holds, LaunchRoad road);

} // namespace appledger
