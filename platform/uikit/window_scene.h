#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

extern const ClassDefinition UIWindowScene_class;

/// The scene of this process's windows; nil on systems before 13, which have none.
id firstWindowScene();

} // namespace platform
