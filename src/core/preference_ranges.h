#pragma once

#include "platform/runtime/object.h"

#include <string_view>

namespace appledger {

/// The values that a key may take of all that its type allows. Readers meet others too, in a file that somebody else
/// has written, and have defaults for them; who sets a key for its owner refuses them.
struct PreferenceRange {
    std::string_view text {}; ///< for people; "" for whatever the type allows
    bool (*contains)(const platform::id& value) = nullptr; ///< null: all
};

namespace preferenceRange {

bool isAppearance(const platform::id& value);
bool isDirectoryOpener(const platform::id& value);
bool isColor(const platform::id& value);
bool isLanguage(const platform::id& value);
bool isRowList(const platform::id& value); ///< each item is one of `rows`

/// What the panel's lists and its bar of actions may show.
inline constexpr std::string_view rows[] { "require_auth", "mute_app", "app_brightness", "keep_awake", "block_update",
    "mute_notif", "roothide_blacklist", "auto_clear", "block_uninstall", "block_notif", "sys_perm", "block_launch",
    "badge", "cache", "data", "reset_perm", "downgrade", "uninstall" };

inline constexpr PreferenceRange appearance { "0 (dark), 1 (light) or 2 (as the system)", isAppearance };
inline constexpr PreferenceRange directoryOpener { "filza or fila", isDirectoryOpener };
inline constexpr PreferenceRange color { "#RRGGBB or #RRGGBBAA", isColor };
inline constexpr PreferenceRange language { "en or zh", isLanguage };
inline constexpr PreferenceRange rowList {
    "a list of these, with commas between them: require_auth, mute_app, app_brightness, keep_awake, block_update, "
    "mute_notif, roothide_blacklist, auto_clear, block_uninstall, block_notif, sys_perm, block_launch, badge, cache, "
    "data, reset_perm, downgrade, uninstall",
    isRowList
};

} // namespace preferenceRange

} // namespace appledger
