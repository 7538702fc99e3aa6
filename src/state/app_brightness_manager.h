#pragma once

#include "platform/foundation/property_list_file.h"
#include "platform/runtime/object.h"
#include "platform/runtime/reclamation.h"
#include "state/front_state.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace appledger {

/// The device path of the brightness table, a property list whose root is a dictionary from bundle
/// identifier to a level from 0.0 to 1.0.
std::string appBrightnessPreferencePath();

/// Gives the application a level of its own, held to 0.0 to 1.0, or takes it away where `level` is empty or
/// negative, in one operation among all processes; opens the file to every writer and then posts the change
/// notification. On an error nothing is posted.
platform::WriteOutcome writeBrightness(std::string_view bundleIdentifier, std::optional<double> level);

/// Gives an application a brightness of its own while it is in front. One instance, on the main queue.
class AppBrightnessManager {
public:
    static AppBrightnessManager& sharedManager();

    /// Rereads the table; the change shows when an application next comes to front. Any thread.
    void reloadConfig();

    /// The application's level as stored, or empty. Any thread.
    std::optional<double> levelFor(std::string_view bundleIdentifier) const;

    /// The application came to the front, or went to the background. The work is queued on the main queue;
    /// an empty identifier is ignored.
    void processAppForeground(std::string_view bundleIdentifier);
    void processAppBackground(std::string_view bundleIdentifier);

    const std::string& lastFrontmostBundleID() const noexcept { return state_.lastFrontmostBundleID; }

private:
    using Levels = std::map<std::string, double, std::less<>>;

    AppBrightnessManager();

    platform::Published<Levels> levels_;
    BrightnessState state_;
};

/// Queues the level, held to 0.0 to 1.0, on the main queue for everyone on the system who keeps one. Any
/// thread.
void setSystemBrightness(double level);

/// The observer of the change notification.
void BrightnessChangedCallback();

} // namespace appledger
