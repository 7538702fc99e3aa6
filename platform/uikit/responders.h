#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

/// Who is asked for what touches no view: keys, and actions without a target. Nil for nobody. Main thread.
id firstResponder();

extern const ClassDefinition UIResponder_class;

} // namespace platform
