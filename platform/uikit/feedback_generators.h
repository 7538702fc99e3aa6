#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

extern const ClassDefinition UIImpactFeedbackGenerator_class;
extern const ClassDefinition UINotificationFeedbackGenerator_class;
extern const ClassDefinition UISelectionFeedbackGenerator_class;

} // namespace platform
