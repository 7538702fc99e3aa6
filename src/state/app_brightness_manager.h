#pragma once

#include "platform/runtime/object.h"
#include "platform/runtime/reclamation.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace appledger {

/// The device path of the brightness table, a property list whose root is a dictionary from bundle
/// identifier to a level from 0.0 to 1.0.
std::string appBrightnessPreferencePath();

/// Which applications have a brightness of their own while they are in front. One instance.
class AppBrightnessManager {
public:
    static AppBrightnessManager& sharedManager();

    /// Rereads the table; the change shows when an application next comes to front. Any thread.
    void reloadConfig();

    /// The application's level as stored, or empty.
    std::optional<double> levelFor(std::string_view bundleIdentifier) const;

private:
    using Levels = std::map<std::string, double, std::less<>>;

    AppBrightnessManager();

    platform::Published<Levels> levels_;
};

/// The observer of the change notification.
void BrightnessChangedCallback();

} // namespace appledger
