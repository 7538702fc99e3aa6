#pragma once

#include <string_view>

/// The names that the library observes and posts and that belong to no row of core/policies.h. The Darwin names, with
/// those of the policies, are of three families; they are an interface to other programs and stay as they are.

namespace appledger::notification {

inline constexpr std::string_view forceRefresh = "com.appledger.forcerefresh";
inline constexpr std::string_view clearCache = "com.appledger.clearcache";
inline constexpr std::string_view iconChanged
    = "com.orbelix.appledger.icon_changed"; ///< for others: nobody here listens

inline constexpr std::string_view brightnessChanged = "com.orbelix.appledger.brightness_changed";

/// Local notifications, inside one process.
inline constexpr std::string_view swipeUpChanged = "com.merrowlane.appledger.swipeup-preferences-changed";
inline constexpr std::string_view swipeDownChanged = "com.merrowlane.appledger.swipedown-preferences-changed";
inline constexpr std::string_view appearanceChanged = "com.merrowlane.appledger.appearance-preferences-changed";
inline constexpr std::string_view forceRefreshIcons = "ALForceRefreshIconsNotification";

} // namespace appledger::notification
