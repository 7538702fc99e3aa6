#pragma once

#include "platform/uikit/view_controllers.h"

namespace platform {

/// The appearance that a view or its controller asks for; 0 for none.
long styleAskedBy(const ViewObject& view);
/// The one in force in the view.
InterfaceStyle styleIn(const ViewObject& view);

/// The screen changes its appearance, or its size: views and controllers hear of it from the outermost on.
void changeScreenStyle(InterfaceStyle style);
void changeScreenSize(CGSize size, double scale);

extern const std::span<const MethodDefinition> traitMethods;

} // namespace platform
