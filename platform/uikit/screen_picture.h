#pragma once

#include "platform/runtime/object.h"

namespace platform {

/// Something that is seen may look different from now on.
void noteDamage() noexcept;

/// What is being drawn now will look different at another moment, though nobody changes it.
void noteMotion() noexcept;

/// All windows as the data of a PNG file, `scale` pixels a point; nil where renderScreen() gives nothing. What is still
/// is drawn once: while nothing is damaged or in motion, the picture that was made last at this scale is kept.
id pictureOfWindows(double scale);

} // namespace platform
