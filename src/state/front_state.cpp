#include "state/front_state.h"

#include <utility>

namespace appledger {

VolumeChange comeToFront(MuteState& state, std::string_view bundleIdentifier, bool isMuted)
{
    state.lastFrontmostBundleID = bundleIdentifier;
    if (isMuted == std::exchange(state.isCurrentlyMuted, isMuted))
        return VolumeChange::None;
    return isMuted ? VolumeChange::Mute : VolumeChange::Restore;
}

VolumeChange leaveFront(MuteState& state, std::string_view bundleIdentifier)
{
    if (!state.isCurrentlyMuted || state.lastFrontmostBundleID != bundleIdentifier)
        return VolumeChange::None;
    state = {};
    return VolumeChange::Restore;
}

std::optional<double> comeToFront(
    BrightnessState& state, std::string_view bundleIdentifier, std::optional<double> level, double present)
{
    state.lastFrontmostBundleID = bundleIdentifier;
    if (level && *level >= 0.0) {
        // From one application with a level to the next, the level of before the first is what counts.
        if (!std::exchange(state.isBrightnessModified, true))
            state.originalBrightness = present;
        return level;
    }
    // Without a level to go back to, the screen still counts as changed here, unlike in leaveFront().
    if (!state.isBrightnessModified || state.originalBrightness < 0.0)
        return std::nullopt;
    state.isBrightnessModified = false;
    return std::exchange(state.originalBrightness, noBrightness);
}

std::optional<double> leaveFront(BrightnessState& state, std::string_view bundleIdentifier)
{
    if (!state.isBrightnessModified || state.lastFrontmostBundleID != bundleIdentifier)
        return std::nullopt;
    const double original = std::exchange(state, {}).originalBrightness;
    return original >= 0.0 ? std::optional(original) : std::nullopt;
}

} // namespace appledger
