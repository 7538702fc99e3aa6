#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

extern const ClassDefinition UIDevice_class;
extern const ClassDefinition UIPasteboard_class;

/// Whether the screen is a pad's: neither of its sides is shorter than 700 points.
bool isPad() noexcept;
/// By the system's numbers: 1 upright, 3 on its side.
NSInteger interfaceOrientation() noexcept;

} // namespace platform
