#pragma once

namespace appledger {

// Nothing where the system has no such class.

/// `[[UIImpactFeedbackGenerator new] impactOccurred]`.
void playImpactHaptic();
/// `[[UISelectionFeedbackGenerator new] selectionChanged]`.
void playSelectionHaptic();

} // namespace appledger
