#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

extern const ClassDefinition CAGradientLayer_class;

} // namespace platform
