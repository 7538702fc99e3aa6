#pragma once

#include "phone/springboard/icons/icon_image_info.h"
#include "platform/runtime/object.h"

/// How the Home Screen comes by the pictures of icons. On 13 and newer its image cache keeps them, each at the sizes
/// that were asked for; older versions have each made when its view asks.

namespace phone {

/// What an icon of the usual size is made with.
SBIconImageInfo homeScreenImageInfo();

/// A square of that many points.
SBIconImageInfo imageInfo(double side);

/// The icon's picture as the Home Screen shows it.
platform::id imageOfIcon(const platform::id& icon, const SBIconImageInfo& info);

/// The same made anew, for the small pictures in a folder; nil for what has none.
platform::id generatedImageOfIcon(const platform::id& icon, double side);

/// Has the picture made anew when it is asked for next.
void forgetImagesOfIcon(const platform::id& icon);

} // namespace phone
