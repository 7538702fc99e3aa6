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

inline constexpr PreferenceRange appearance { "0 (dark), 1 (light) or 2 (as the system)", isAppearance };
inline constexpr PreferenceRange directoryOpener { "filza or fila", isDirectoryOpener };
inline constexpr PreferenceRange color { "#RRGGBB or #RRGGBBAA", isColor };

} // namespace preferenceRange

} // namespace appledger
