#pragma once

namespace appledger {

/// `[[UIImpactFeedbackGenerator new] impactOccurred]`; nothing where the system has no such class.
void playImpactHaptic();

} // namespace appledger
