#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// `ALActionsBarView`: a row of buttons, each a picture over a name and a detail, found again by their index. An index
/// that isn't there changes nothing. Main thread.
extern const platform::ClassDefinition ALActionsBarView_class;

/// `ALActionButton`: one of them. Its colours are those of the appearance at each layout.
extern const platform::ClassDefinition ALActionButton_class;

} // namespace appledger
