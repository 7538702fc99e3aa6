#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

extern const ClassDefinition SBWorkspaceTransitionRequest_class;
extern const ClassDefinition SBMainWorkspaceTransitionRequest_class { .name = "SBMainWorkspaceTransitionRequest",
    .superclass = &SBWorkspaceTransitionRequest_class };

} // namespace phone
