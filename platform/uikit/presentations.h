#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

extern const ClassDefinition UITransitionView_class;
extern const ClassDefinition UIDimmingView_class;
extern const ClassDefinition UISheetPresentation_class;

} // namespace platform
