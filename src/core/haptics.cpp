#include "core/haptics.h"

#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

void playImpactHaptic()
{
    ask<"impactOccurred", void>(askObject<"new">(id(classNamed<"UIImpactFeedbackGenerator">())));
}

} // namespace appledger
