#pragma once

#include "platform/graphics/geometry.h"

#include <string_view>

namespace phone {

/// Draws the icon of an application that the phone comes with, in a square of 60 points: the Calendar's and the Clock's
/// as they are at the time. False, and nothing drawn, for any other.
bool drawGlyphIcon(std::string_view identifier, const platform::CGRect& square);

} // namespace phone
