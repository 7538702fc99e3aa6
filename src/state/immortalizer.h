#pragma once

namespace appledger {

/// Rereads the Immortalizer's policies, then on the main queue has the icons and the notification state of
/// the applications that are kept alive follow them. An application that has just left the list keeps its
/// icon accessory and its state until its next event.
void ImmortalizerChangedCallback();

} // namespace appledger
