#pragma once

#include "platform/graphics/geometry.h"

#include <string_view>

namespace phone {

/// Draws the icon of an application that the phone comes with, in a square of 60 points with that corner radius. False,
/// and nothing drawn, for any other.
bool drawGlyphIcon(std::string_view identifier, const platform::CGRect& square, double cornerRadius);

} // namespace phone
