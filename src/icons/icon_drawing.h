#pragma once

#include "platform/graphics/geometry.h"
#include "platform/runtime/object.h"

/// How a picture becomes an icon. Fills, never fits: the picture covers the icon's box, centred, and what stands over
/// is cut off. Any thread.

namespace appledger {

/// Where a picture of that size stands in a box from (0, 0) to `box`, at `zoom` times the size that just covers it.
platform::CGRect fillingRect(const platform::CGSize& picture, const platform::CGSize& box, double zoom = 1);

/// The icon with rounded corners, transparent outside of them; `size` and `cornerRadius` in points, `scale` pixels a
/// point. Nil where no image comes out.
platform::id drawMaskedIcon(const platform::id& image, const platform::CGSize& size, double scale, double cornerRadius);

/// The icon without rounded corners, opaque. What the picture's own corners leave free shows the picture again, 1.3
/// times as large.
platform::id drawUnmaskedIcon(const platform::id& image, const platform::CGSize& size, double scale);

/// The picture's centre square in its own pixels, with rounded corners of 0.224 of its side: what an icon file holds.
/// Nil where no image comes out.
platform::id drawIconForFile(const platform::id& image);

} // namespace appledger
