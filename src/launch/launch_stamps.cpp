#include "launch/launch_stamps.h"

#include <memory>

namespace appledger {

using namespace platform;

Published<LaunchStamps> gLastTransitionStamps;

LaunchStamps LaunchStamps::with(std::string_view identifier, double time) const
{
    LaunchStamps changed = *this;
    changed.stamps_.insert_or_assign(std::string(identifier), time);
    return changed;
}

std::optional<double> LaunchStamps::of(std::string_view identifier) const noexcept
{
    const auto stamp = stamps_.find(identifier);
    return stamp == stamps_.end() ? std::nullopt : std::optional(stamp->second);
}

void recordLaunch(std::string_view identifier, double time)
{
    const ReadSection section;
    for (;;) {
        const LaunchStamps* const former = gLastTransitionStamps.load();
        auto changed = std::make_unique<const LaunchStamps>((former ? *former : LaunchStamps()).with(identifier, time));
        if (gLastTransitionStamps.assignIf(former, changed.get())) {
            static_cast<void>(changed.release()); // the stamps own it now
            return;
        }
    }
}

} // namespace appledger
