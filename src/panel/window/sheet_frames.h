#pragma once

#include "platform/graphics/geometry.h"

/// Where the panel's sheet stands and where it comes from: plain values, in points of its container.

namespace appledger {

/// The edge of the container that the sheet slides in from; the numbers are those of a configuration's `direction`.
enum class SheetEdge : platform::NSInteger { Bottom = 0, Top = 1, Left = 2, Right = 3 };

/// The share is that of the container along the direction's axis, in percent. No size for a number that is no edge.
platform::CGSize sheetSize(platform::NSInteger direction, double screenPercentage, platform::CGSize container);

/// Of a sheet of that size, shown. From the top and from the left it begins at the container's corner.
platform::CGRect shownSheetFrame(
    platform::NSInteger direction, double screenPercentage, platform::CGSize size, platform::CGSize container);

/// Beyond the edge, beside where it is shown. A number that is no edge leaves it there.
platform::CGRect hiddenSheetFrame(
    platform::NSInteger direction, const platform::CGRect& shown, platform::CGSize container);

} // namespace appledger
