#pragma once

#include <string_view>

/// The Darwin names that the library observes and posts. Three families stand side by side; they are an
/// interface to other programs and stay as they are.

namespace appledger::notification {

inline constexpr std::string_view forceRefresh = "com.appledger.forcerefresh";
inline constexpr std::string_view clearCache = "com.appledger.clearcache";

inline constexpr std::string_view updateBlockedChanged = "com.orbelix.appledger.update_blocked_changed";
inline constexpr std::string_view keepAwakeChanged = "com.orbelix.appledger.keepawake_changed";
inline constexpr std::string_view notificationsChanged = "com.orbelix.appledger.notifications_changed";
inline constexpr std::string_view notificationsMutedChanged = "com.orbelix.appledger.notifications_muted_changed";
inline constexpr std::string_view launchBlockedChanged = "com.orbelix.appledger.launch_blocked_changed";
inline constexpr std::string_view uninstallBlockedChanged = "com.orbelix.appledger.uninstall_blocked_changed";
inline constexpr std::string_view autoClearChanged = "com.orbelix.appledger.autoclear_changed";
inline constexpr std::string_view hiddenChanged = "com.orbelix.appledger.hidden_changed";
inline constexpr std::string_view badgeChanged = "com.orbelix.appledger.badge_changed";
inline constexpr std::string_view requireAuthChanged = "com.orbelix.appledger.requireauth_changed";
inline constexpr std::string_view brightnessChanged = "com.orbelix.appledger.brightness_changed";
inline constexpr std::string_view redirectSaved = "com.orbelix.appledger.redirect_saved";
inline constexpr std::string_view immortalizerChanged = "com.orbelix.appledger.immortalizer_changed";

inline constexpr std::string_view runningIndicatorChanged = "com.merrowlane.appledger.runningindicator-changed";

/// Local notifications, inside one process.
inline constexpr std::string_view swipeUpChanged = "com.merrowlane.appledger.swipeup-preferences-changed";
inline constexpr std::string_view swipeDownChanged = "com.merrowlane.appledger.swipedown-preferences-changed";
inline constexpr std::string_view appearanceChanged = "com.merrowlane.appledger.appearance-preferences-changed";
inline constexpr std::string_view forceRefreshIcons = "ALForceRefreshIconsNotification";

} // namespace appledger::notification
