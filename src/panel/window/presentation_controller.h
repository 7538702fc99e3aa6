#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// Arranges the panel's sheet over a dimmed ground that dismisses it. Main thread.
extern const platform::ClassDefinition ALDataPresentationController_class;

} // namespace appledger
