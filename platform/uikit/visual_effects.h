#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

extern const ClassDefinition UIBlurEffect_class;
extern const ClassDefinition UIVisualEffect_class;
extern const ClassDefinition UIVisualEffectView_class;

} // namespace platform
