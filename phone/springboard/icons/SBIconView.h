#pragma once

#include "platform/graphics/geometry.h"

#include <string_view>

namespace phone {

/// A view of the icon at that place: "SBIconLocationRoot", "SBIconLocationDock" or "SBIconLocationFolder".
platform::id makeIconView(const platform::id& icon, std::string_view location, const platform::CGRect& frame);

} // namespace phone
