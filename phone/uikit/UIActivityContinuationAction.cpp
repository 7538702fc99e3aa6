#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

/// What goes along when an activity is taken up in another application.
extern const ClassDefinition UIActivityContinuationAction_class { .name = "UIActivityContinuationAction" };

} // namespace phone
