#pragma once

#include "platform/foundation/property_list_file.h"
#include "platform/runtime/object.h"
#include "state/front_state.h"

#include <atomic>
#include <map>
#include <string>
#include <string_view>

namespace appledger {

/// The device path of the mute list, a property list whose root is an array of bundle identifiers.
std::string GetAppMutePrefPath();

/// Puts the application on the mute list or takes it off, in one operation among all processes, and opens the
/// file to every writer. Nobody has to be told: the list is read at each decision.
platform::WriteOutcome writeMuted(std::string_view bundleIdentifier, bool muted);

/// True while a change of the volume by the manager is under way: the volume HUD is then not to show.
extern std::atomic<bool> g_isMutingHUD;

/// Takes the media volume away while a listed application is in front. One instance, on the main queue.
class AppMuteManager {
public:
    static AppMuteManager& sharedManager();

    /// Reads the list anew, so that a change needs no notification; while the file can't be read, the last
    /// list stays in force.
    bool isMuted(std::string_view bundleIdentifier);

    /// The application came to the front, or went to the background. The work is queued on the main queue;
    /// an empty identifier is ignored.
    void processAppForeground(std::string_view bundleIdentifier);
    void processAppBackground(std::string_view bundleIdentifier);

    const std::string& lastFrontmostBundleID() const noexcept { return state_.lastFrontmostBundleID; }

private:
    AppMuteManager();

    void change(VolumeChange change);
    void performVolumeChangeToMute();
    void performVolumeRestore();

    platform::id mutedBundleIDs_;
    std::map<std::string, float, std::less<>> savedVolumes_; ///< by category: the volume before muting
    MuteState state_;
};

} // namespace appledger
