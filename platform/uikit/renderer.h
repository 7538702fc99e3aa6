#pragma once

#include "platform/graphics/canvas.h"

#include <optional>
#include <string>

namespace platform {

class LayerObject;
class ViewObject;

/// Draws the view as it is seen now, in its superview's coordinates, with all that stands in it.
void renderView(Canvas& canvas, const ViewObject& view);

/// Draws a layer that has no view, and what stands in it.
void renderLayer(Canvas& canvas, const LayerObject& layer, const CGRect& bounds);

/// All windows on black, `scale` pixels a point. Lays out first what has asked for it. Empty for a scale that isn't
/// above 0, and for more pixels than an image can have.
std::optional<Bitmap> renderScreen(double scale);

/// The windows as text, one view a line, indented by its depth:
///
///     UILabel (8, 40.5, 100 x 20) "Notes" alpha 0.5 hidden
///
/// Values as they are seen now. What is hidden is listed with all that stands in it.
std::string describeScreen();
std::string describeView(const ViewObject& view, int depth = 0);

} // namespace platform
