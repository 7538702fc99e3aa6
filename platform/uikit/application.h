#pragma once

#include "platform/uikit/touches.h"
#include "platform/uikit/window.h"

namespace platform {

extern const ClassDefinition UIApplication_class;
extern const ClassDefinition UIScreen_class;

/// Nil when no window is the key window.
id currentKeyWindow();

} // namespace platform
