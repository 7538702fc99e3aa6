#include "launch/launch_stamps.h"

#include <algorithm>
#include <memory>

namespace appledger {

using namespace platform;

Published<LaunchStamps> gLastTransitionStamps;

namespace {

constexpr auto identifierOf
    = [](const std::pair<std::string, double>& stamp) -> std::string_view { return stamp.first; };

} // namespace

LaunchStamps LaunchStamps::with(std::string_view identifier, double time) const
{
    LaunchStamps changed = *this;
    const auto place = std::ranges::lower_bound(changed.stamps_, identifier, {}, identifierOf);
    if (place != changed.stamps_.end() && place->first == identifier)
        place->second = time;
    else
        changed.stamps_.emplace(place, identifier, time);
    return changed;
}

std::optional<double> LaunchStamps::of(std::string_view identifier) const noexcept
{
    const auto place = std::ranges::lower_bound(stamps_, identifier, {}, identifierOf);
    return place != stamps_.end() && place->first == identifier ? std::optional(place->second) : std::nullopt;
}

void recordLaunch(std::string_view identifier, double time)
{
    const ReadSection section;
    for (;;) {
        const LaunchStamps* const former = gLastTransitionStamps.load();
        auto changed = std::make_unique<const LaunchStamps>((former ? *former : LaunchStamps()).with(identifier, time));
        if (gLastTransitionStamps.assignIf(former, changed.get())) {
            changed.release();
            return;
        }
    }
}

} // namespace appledger
