#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// `ALRedirectAppSelector`: the list from which the applications of one redirect rule are picked. Whoever presents it
/// says the key of the domain (`setPreferenceKey:`) and the title (`setAppTitle:`). Nothing is written before it is
/// saved. Main thread.
extern const platform::ClassDefinition ALRedirectAppSelector_class;

} // namespace appledger
