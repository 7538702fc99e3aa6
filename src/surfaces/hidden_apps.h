#pragma once

namespace appledger {

/// Rereads the hidden applications, then has the Home Screen lay its icons out anew, on the main queue.
void HiddenAppsChangedCallback();

} // namespace appledger
