#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What an application has for a process state while it runs.
bool isRunning(const id&, SEL)
{
    return true;
}

constexpr MethodDefinition methods[] {
    method<"isRunning", &isRunning>(),
};

} // namespace

extern const ClassDefinition SBApplicationProcessState_class { .name = "SBApplicationProcessState",
    .methods = methods };

} // namespace phone
