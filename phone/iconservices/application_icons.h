#pragma once

#include "platform/runtime/object.h"

namespace phone {

/// The icon of an installed application as the system hands it out: `side` points square. Kept until the icon cache is
/// cleared. Nil for an application that isn't installed.
platform::id applicationIcon(const platform::id& bundleIdentifier, double side, double scale);

/// The sizes of icons by the system's numbers for them: of Settings (0), search results (1), the Home Screen (2),
/// the head of a notification (8) and its banner (10). 60 points for any other.
double sideOfFormat(int format);

} // namespace phone
