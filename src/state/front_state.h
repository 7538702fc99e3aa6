#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What is to be done to the volume and the screen when an application comes to the front or leaves it: the
/// managers' state changes, on plain values. An identifier is never empty here.

namespace appledger {

struct MuteState {
    std::string lastFrontmostBundleID; ///< the application last reported in front, "" if none
    bool isCurrentlyMuted = false; ///< the volume was taken away and not yet put back
};

enum class VolumeChange { None, Mute, Restore };

/// `isMuted`: whether the application is to be silent while it is in front.
VolumeChange comeToFront(MuteState& state, std::string_view bundleIdentifier, bool isMuted);
VolumeChange leaveFront(MuteState& state, std::string_view bundleIdentifier);

inline constexpr double noBrightness = -1.0;

struct BrightnessState {
    std::string lastFrontmostBundleID;
    double originalBrightness = noBrightness; ///< the level to go back to
    bool isBrightnessModified = false; ///< the level was changed and not yet put back
};

/// The level to set, or empty. `level` is the application's own, if it has one (a negative one counts as
/// none); `present` that of the screen now.
std::optional<double> comeToFront(
    BrightnessState& state, std::string_view bundleIdentifier, std::optional<double> level, double present);
std::optional<double> leaveFront(BrightnessState& state, std::string_view bundleIdentifier);

} // namespace appledger
