#pragma once

#include "platform/graphics/geometry.h"
#include "platform/runtime/object.h"

/// The screen as a person, or a test in a person's place, finds it.

namespace platform {

/// All windows from the back to the front, each a dictionary: see elementsOfScreen().
id elementsOfWindows();

/// What a finger at that point of the screen touches; nil where no window has anything there.
id viewOfWindowsAt(CGPoint point);

} // namespace platform
