#pragma once

#include "platform/graphics/bitmap.h"

namespace bench {

/// A picture that compresses as one of a camera does: light that falls off, shapes with sharp edges, texture of every
/// size, and the grain of a sensor. The same each time.
platform::Bitmap photograph(int width, int height);

} // namespace bench
