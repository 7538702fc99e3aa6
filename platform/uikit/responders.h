#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

/// Who is asked for what touches no view: keys, and actions without a target. Nil for nobody. Main thread.
id firstResponder();

/// Has the responder be the first no more, whether it wants to or not.
void forceResignation(const id& responder);

extern const ClassDefinition UIResponder_class;

} // namespace platform
