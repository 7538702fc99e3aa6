#include "phone/process/journal.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

void impactOccurred(const id&, SEL)
{
    journal(JournalEvent::Haptic, "impact");
}

constexpr MethodDefinition methods[] {
    method<"impactOccurred", &impactOccurred>(),
};

} // namespace

extern const ClassDefinition UIImpactFeedbackGenerator_class { .name = "UIImpactFeedbackGenerator",
    .methods = methods };

} // namespace phone
