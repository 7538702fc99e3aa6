#include "core/haptics.h"

#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

void playImpactHaptic()
{
    ask<"impactOccurred", void>(askObject<"new">(id(classNamed<"UIImpactFeedbackGenerator">())));
}

void playSelectionHaptic()
{
    ask<"selectionChanged", void>(askObject<"new">(id(classNamed<"UISelectionFeedbackGenerator">())));
}

} // namespace appledger
